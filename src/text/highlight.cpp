#include "text/highlight.h"

#include "text/fold.h"
#include "text/utf8.h"

namespace larkspin {

// Folding can change how many bytes a character takes, never how many characters there are.
// So both texts are walked side by side, and a hit must end where a character ends: bytes that
// only look like one are passed over.
std::string highlight(std::string_view text, std::string_view find, std::string_view replacement) {
    const std::string foldedText = foldCase(text), wanted = foldCase(find);
    if (wanted.empty())
        return std::string(text);
    std::size_t wantedCharacters = 0;
    for (std::string_view rest = wanted; !rest.empty(); ++wantedCharacters)
        rest.remove_prefix(firstCharacter(rest).length);

    std::string result;
    std::string_view folded = foldedText;
    while (!text.empty()) {
        const bool hit =
            folded.starts_with(wanted) && prefixLength(folded, wantedCharacters) == wanted.size();
        const std::size_t length = prefixLength(text, hit ? wantedCharacters : 1);
        result += hit ? replacement : text.substr(0, length);
        text.remove_prefix(length);
        folded.remove_prefix(hit ? wanted.size() : firstCharacter(folded).length);
    }
    return result;
}

} // namespace larkspin
