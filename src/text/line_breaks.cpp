#include "text/line_breaks.h"

#include "text/characters.h"
#include "text/utf8.h"

namespace larkspin {

std::string withoutBreaks(std::string text, std::string_view breaks) {
    std::erase_if(text, [breaks](char byte) { return breaks.find(byte) != breaks.npos; });
    return text;
}

std::string breaksAsBlanks(std::string text, std::string_view breaks) {
    for (char& byte : text)
        if (breaks.find(byte) != breaks.npos)
            byte = ' ';
    return text;
}

std::string breaksEscaped(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (const char byte : text) {
        if (byte == '\n')
            line += "\\n";
        else if (byte == '\r')
            line += "\\r";
        else
            line += byte;
    }
    return line;
}

std::string controlsAsBlanks(std::string_view text) {
    constexpr char32_t lineSeparator = 0x2028, paragraphSeparator = 0x2029;
    std::string line;
    while (!text.empty()) {
        const auto [code, length, isValid] = firstCharacter(text);
        if (isValid && (isControl(code) || code == lineSeparator || code == paragraphSeparator))
            line += ' ';
        else
            line += text.substr(0, length);
        text.remove_prefix(length);
    }
    return line;
}

} // namespace larkspin
