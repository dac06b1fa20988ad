#include "shell/ini_text.h"

#include "text/fold.h"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace larkspin {

namespace {

constexpr std::string_view lineEnd = "\r\n";

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

// A song's name may open with a bracket; only a line that also closes with one is a header.
std::optional<std::string_view> headerName(std::string_view line) {
    line = trimmed(line);
    if (line.size() < 2 || line.front() != '[' || line.back() != ']')
        return std::nullopt;
    return trimmed(line.substr(1, line.size() - 2));
}

// What there is of a section and a key, as positions in the contents.
struct Found {
    bool section = false;
    std::size_t sectionEnd = 0; // behind the last line of the section that isn't blank
    std::optional<std::size_t> line;
    std::size_t lineEnd = 0;
};

Found findKey(std::string_view contents, std::string_view section, std::string_view key) {
    Found found;
    bool inside = false;
    for (std::size_t at = 0; at < contents.size();) {
        const std::size_t newline = contents.find('\n', at);
        const std::size_t next = newline == std::string_view::npos ? contents.size() : newline + 1;
        const std::string_view line = contents.substr(at, next - at);
        if (const auto name = headerName(line)) {
            inside = equalFolded(*name, section) && (inside || !found.section);
            found.section = found.section || inside;
            if (inside)
                found.sectionEnd = next;
        } else if (inside && !trimmed(line).empty()) {
            found.sectionEnd = next;
            if (line.find('=') != std::string_view::npos && equalFolded(beforeEquals(line), key)) {
                found.line = at;
                found.lineEnd = next;
                return found;
            }
        }
        at = next;
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
    const Found found = findKey(contents, section, onOneLine(beforeEquals(key)));
    if (!found.line)
        return {};
    const std::string_view line = contents.substr(*found.line, found.lineEnd - *found.line);
    return trimmed(line.substr(line.find('=') + 1));
}

std::string withIniValue(std::string_view contents, std::string_view section, std::string_view key,
                         std::string_view value) {
    const std::string name = onOneLine(beforeEquals(key));
    if (name.empty())
        return std::string(contents);
    const Found found = findKey(contents, section, name);
    const std::string line = name + '=' + onOneLine(value);

    std::string result;
    result.reserve(contents.size() + section.size() + line.size() + 16);
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

} // namespace larkspin
