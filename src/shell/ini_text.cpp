#include "shell/ini_text.h"

#include "text/fold.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace larkspin {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n\f\v";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view beforeEquals(std::string_view text) {
    return trimmed(text.substr(0, text.find('=')));
}

std::string_view valueOf(std::string_view line) {
    return trimmed(line.substr(line.find('=') + 1));
}

// The name in a section's header; nothing for any other line. The key of a song whose name begins
// with a bracket looks alike, but has an equals sign after the brackets; a header can have one
// there in a comment only.
std::optional<std::string_view> headerName(std::string_view line) {
    line = trimmed(line);
    const auto end = line.find(']');
    if (!line.starts_with('[') || end == std::string_view::npos)
        return std::nullopt;
    const std::string_view after = trimmed(line.substr(end + 1));
    if (after.find('=') != std::string_view::npos && !after.starts_with(';'))
        return std::nullopt;
    return trimmed(line.substr(1, end - 1));
}

// Walks through the lines of the first section of that name, blank ones left out. If a second
// header of the same name comes next, the section goes on after it.
class SectionLines {
public:
    SectionLines(std::string_view contents, std::string_view section)
        : contents_(contents), section_(section) {
        if (contents_.starts_with(byteOrderMark))
            next_ = byteOrderMark.size();
    }

    // False at the section's end. The first line is its header.
    bool advance() {
        while (next_ < contents_.size()) {
            begin_ = next_;
            const auto newline = contents_.find('\n', begin_);
            next_ = newline == std::string_view::npos ? contents_.size() : newline + 1;
            line_ = trimmed(contents_.substr(begin_, next_ - begin_));
            if (const auto name = headerName(line_)) {
                const bool fits = equalFolded(*name, section_);
                if (inside_ && !fits)
                    return false;
                inside_ = fits;
                isHeader_ = true;
            } else {
                isHeader_ = false;
            }
            if (inside_ && !line_.empty())
                return true;
        }
        return false;
    }

    std::size_t begin() const { return begin_; }
    std::size_t end() const { return next_; } // after the line break
    std::string_view line() const { return line_; }
    bool holdsKey() const { return !isHeader_ && line_.find('=') != std::string_view::npos; }

private:
    std::string_view contents_, section_, line_;
    std::size_t begin_ = 0, next_ = 0;
    bool inside_ = false, isHeader_ = false;
};

// Where a section and a key in it were found, as positions in the contents.
struct Found {
    bool section = false;
    std::size_t sectionEnd = 0; // after the last line of the section that isn't blank
    std::optional<std::size_t> line;
    std::size_t lineEnd = 0;
};

Found findKey(std::string_view contents, std::string_view section, std::string_view key) {
    Found found;
    for (SectionLines lines(contents, section); lines.advance();) {
        found.section = true;
        found.sectionEnd = lines.end();
        if (lines.holdsKey() && equalFolded(beforeEquals(lines.line()), key)) {
            found.line = lines.begin();
            found.lineEnd = lines.end();
            return found;
        }
    }
    return found;
}

std::string onOneLine(std::string_view text) {
    std::string line(text);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
    return std::string(trimmed(line));
}

void endLastLine(std::string& text) {
    if (!text.empty() && text.back() != '\n')
        text += lineEnd;
}

} // namespace

std::string_view iniValue(std::string_view contents, std::string_view section,
                          std::string_view key) {
    const std::string name = onOneLine(beforeEquals(key));
    const Found found = name.empty() ? Found{} : findKey(contents, section, name);
    if (!found.line)
        return {};
    return valueOf(contents.substr(*found.line, found.lineEnd - *found.line));
}

IniValues iniValues(std::string_view contents, std::string_view section) {
    IniValues values;
    for (SectionLines lines(contents, section); lines.advance();)
        if (lines.holdsKey() && !beforeEquals(lines.line()).empty())
            values.emplace(foldCase(beforeEquals(lines.line())), valueOf(lines.line()));
    return values;
}

std::string withIniValue(std::string_view contents, std::string_view section, std::string_view key,
                         std::string_view value) {
    const std::string name = onOneLine(beforeEquals(key));
    const std::string line = name + '=' + onOneLine(value);
    if (name.empty() || headerName(line))
        return std::string(contents);
    const Found found = findKey(contents, section, name);

    std::string result;
    result.reserve(contents.size() + section.size() + line.size() + 16);
    // The line is replaced where it stands, so that the rest of the file keeps its order and its
    // comments.
    if (found.line) {
        result = contents.substr(0, *found.line);
        result.append(line).append(lineEnd).append(contents.substr(found.lineEnd));
    } else if (found.section) {
        result = contents.substr(0, found.sectionEnd);
        endLastLine(result);
        result.append(line).append(lineEnd).append(contents.substr(found.sectionEnd));
    } else {
        result = contents;
        endLastLine(result);
        result.append("[").append(section).append("]").append(lineEnd);
        result.append(line).append(lineEnd);
    }
    return result;
}

std::string withoutIniKey(std::string_view contents, std::string_view section,
                          std::string_view key) {
    const std::string name = onOneLine(beforeEquals(key));
    std::string result(contents);
    if (name.empty())
        return result;
    // The key may be there more than once. A line that is left would count from now on.
    for (;;) {
        const Found found = findKey(result, section, name);
        if (!found.line)
            return result;
        result.erase(*found.line, found.lineEnd - *found.line);
    }
}

} // namespace larkspin
