#include "playback/count_keys.h"

#include "shell/ini_text.h"
#include "text/blanks.h"
#include "text/characters.h"
#include "text/parts.h"

#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t longestEscaped = 4096; // bytes; no file's name comes near it
constexpr std::string_view digits = "0123456789ABCDEF";

bool isBlank(char byte) {
    return iniBlanks.find(byte) != std::string_view::npos;
}

// A section's header, when a comment seems to stand after its bracket.
bool opensLikeHeader(std::string_view title) {
    return title.starts_with('[') &&
           withoutBlanks(partedAt(title, ']').tail, iniBlanks).starts_with(';');
}

// Whether a name can't be a key as it is.
bool isUnfit(std::string_view title) {
    return !title.empty() && (isBlank(title.front()) || isBlank(title.back()) ||
                              title.find('=') != std::string_view::npos || hasControls(title) ||
                              opensLikeHeader(title));
}

std::string escaped(std::string_view title) {
    std::string key;
    for (std::size_t at = 0; at < title.size(); ++at) {
        const char byte = title[at];
        const bool isEnd = at == 0 || at + 1 == title.size();
        if (byte == '=' || byte == '%' || isControl(byte) || (isEnd && isBlank(byte)) ||
            (at == 0 && byte == '[')) {
            const auto code = static_cast<unsigned char>(byte);
            key += {'%', digits[code / 16], digits[code % 16]};
        } else {
            key += byte;
        }
    }
    return key;
}

std::string unescaped(std::string_view key) {
    std::string title;
    for (std::size_t at = 0; at < key.size(); ++at) {
        const auto high = at + 2 < key.size() ? digits.find(key[at + 1]) : digits.npos;
        const auto low = high != digits.npos ? digits.find(key[at + 2]) : digits.npos;
        if (key[at] != '%' || low == digits.npos) {
            title += key[at];
            continue;
        }
        title += static_cast<char>(high * 16 + low);
        at += 2;
    }
    return title;
}

// Whether the text is the escaped form of a name that needs escapes, perhaps of a name that is such
// a form itself. As a song's name it has to be escaped once more, or two songs would share a key.
bool isEscaped(std::string_view text) {
    if (text.size() > longestEscaped)
        return false;
    for (std::string form(text);;) {
        std::string name = unescaped(form);
        if (name == form || escaped(name) != form)
            return false;
        if (isUnfit(name))
            return true;
        form = std::move(name);
    }
}

} // namespace

std::string countKey(std::string_view title) {
    return isUnfit(title) || isEscaped(title) ? escaped(title) : std::string(title);
}

std::string titleOfCountKey(std::string_view key) {
    return isEscaped(key) ? unescaped(key) : std::string(key);
}

} // namespace larkspin
