#include "shell/ini_text.h"

#include "text/blanks.h"
#include "text/fold.h"
#include "text/line_breaks.h"
#include "text/parts.h"
#include "text/utf8.h"

#include <cstddef>
#include <optional>

namespace larkspin {

namespace {

std::string_view trimmed(std::string_view text) {
    return withoutBlanks(text, iniBlanks);
}

std::string_view beforeEquals(std::string_view text) {
    return trimmed(partedAt(text, '=').head);
}

std::string_view valueOf(std::string_view line) {
    return trimmed(partedAt(line, '=').tail);
}

// The name in a section's header; nothing for any other line. The key of a song whose name begins
// with a bracket looks alike, but has an equals sign after the brackets; a header can have one
// there in a comment only.
std::optional<std::string_view> headerName(std::string_view line) {
    const auto [name, rest, isClosed] = partedAt(trimmed(line), ']');
    const std::string_view after = trimmed(rest);
    if (!name.starts_with('[') || !isClosed ||
        (partedAt(after, '=').isParted && !after.starts_with(';')))
        return std::nullopt;
    return trimmed(name.substr(1));
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

// What can stand on a line of the file.
std::string fitted(std::string_view text) {
    return std::string(trimmed(breaksAsBlanks(std::string(text), lineBreaksAndNul)));
}

void endLastLine(std::string& text) {
    if (!text.empty() && text.back() != '\n')
        text += lineEnd;
}

} // namespace

std::string_view iniValue(std::string_view contents, std::string_view section,
                          std::string_view key) {
    const std::string name = fitted(beforeEquals(key));
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
    const std::string name = fitted(beforeEquals(key));
    const std::string line = name + '=' + fitted(value);
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
    const std::string name = fitted(beforeEquals(key));
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
