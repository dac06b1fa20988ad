#include "told.h"

#include <cstdio>

namespace larkspin::client {

namespace {

constexpr std::string_view letters = "rnt\\", meant = "\r\n\t\\";

} // namespace

void tell(const std::string& what, const std::string& text) {
    std::string line = what;
    if (!text.empty())
        line += ' ';
    for (const char character : text) {
        const std::size_t at = meant.find(character);
        if (at == std::string_view::npos)
            line += character;
        else
            line += {'\\', letters[at]};
    }
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fflush(stdout);
}

std::string unescaped(const std::string& text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t letter =
            text[at] == '\\' && at + 1 < text.size() ? letters.find(text[at + 1]) : letters.npos;
        if (letter == letters.npos)
            plain += text[at];
        else {
            plain += meant[letter];
            ++at;
        }
    }
    return plain;
}

} // namespace larkspin::client
