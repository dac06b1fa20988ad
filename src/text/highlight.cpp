#include "text/highlight.h"

#include "text/fold.h"
#include "text/utf8.h"

namespace larkspin {

// Folding can change how many bytes a character takes, never how many characters there are.
// So the hit is looked up in the folded text and carried over to the text by counting.
std::string highlight(std::string_view text, std::string_view find, std::string_view replacement) {
    const std::string foldedText = foldCase(text), wanted = foldCase(find);
    if (wanted.empty())
        return std::string(text);
    const std::size_t wantedCharacters = [&] {
        std::size_t count = 0;
        for (std::string_view rest = wanted; !rest.empty(); ++count)
            rest.remove_prefix(firstCharacter(rest).length);
        return count;
    }();

    std::string result;
    std::size_t foldedAt = 0, hit = foldedText.find(wanted);
    while (!text.empty()) {
        if (foldedAt == hit) {
            result += replacement;
            text.remove_prefix(prefixLength(text, wantedCharacters));
            foldedAt += wanted.size();
            hit = foldedText.find(wanted, foldedAt);
            continue;
        }
        const std::size_t length = firstCharacter(text).length;
        result += text.substr(0, length);
        text.remove_prefix(length);
        foldedAt += firstCharacter(std::string_view(foldedText).substr(foldedAt)).length;
        if (hit < foldedAt) // it began inside a character: bytes that only look like a hit
            hit = foldedText.find(wanted, foldedAt);
    }
    return result;
}

} // namespace larkspin
