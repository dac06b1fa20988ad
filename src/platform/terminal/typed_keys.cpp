#include "platform/terminal/typed_keys.h"

#include "text/characters.h"
#include "text/utf8.h"

namespace larkspin {

namespace {

constexpr char escape = '\x1b';
constexpr std::size_t longestSequence = 32; // far more than any key sends

// The length of the first character; 0 while bytes of it are still to come.
std::size_t characterLength(std::string_view bytes) {
    constexpr unsigned char leadOfTwo = 0xC2, leadOfThree = 0xE0, leadOfFour = 0xF0;
    const Character character = firstCharacter(bytes);
    if (character.valid)
        return character.length;
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const std::size_t whole = lead >= leadOfFour ? 4 : lead >= leadOfThree ? 3 : 2;
    if (lead < leadOfTwo || bytes.size() >= whole)
        return 1;
    for (const char byte : bytes.substr(1))
        if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80)
            return 1;
    return 0;
}

bool endsSequence(char byte) {
    return byte >= '@' && byte <= '~';
}

// A control sequence is "ESC [", parameters, and a letter or sign that ends it. A byte that can be
// none of these begins the next key.
std::size_t controlSequenceLength(std::string_view bytes) {
    for (std::size_t at = 2; at < bytes.size(); ++at) {
        if (endsSequence(bytes[at]))
            return at + 1;
        if (bytes[at] < ' ' || bytes[at] > '~' || at == longestSequence)
            return at;
    }
    return 0;
}

} // namespace

std::size_t keyLength(std::string_view bytes) {
    if (bytes[0] != escape)
        return characterLength(bytes);
    if (bytes.size() == 1)
        return 0;
    if (bytes[1] == '[')
        return controlSequenceLength(bytes);
    if (bytes[1] == 'O')
        return bytes.size() < 3 ? 0 : endsSequence(bytes[2]) ? 3 : 2;
    // The only control characters that Alt makes another key of.
    constexpr std::string_view erasing = "\x08\x7F";
    if (isControl(bytes[1]) && erasing.find(bytes[1]) == std::string_view::npos)
        return 1;
    const std::size_t length = characterLength(bytes.substr(1));
    return length == 0 ? 0 : 1 + length;
}

std::size_t plainLength(std::string_view bytes) {
    std::size_t length = 0;
    while (length < bytes.size() && !isControl(bytes[length])) {
        const std::size_t character = characterLength(bytes.substr(length));
        if (character == 0)
            break;
        length += character;
    }
    return length;
}

std::wstring wideText(std::string_view bytes) {
    std::wstring text;
    while (!bytes.empty()) {
        const Character character = firstCharacter(bytes);
        text += character.valid ? static_cast<wchar_t>(character.code) : L'\uFFFD';
        bytes.remove_prefix(character.length);
    }
    return text;
}

} // namespace larkspin
