#include "host/called_by_name.h"

#include "text/characters.h"
#include "text/fold.h"

#include <string>

namespace larkspin {

namespace {

// Bytes beyond ASCII belong to letters.
bool isInWord(char c) {
    return isLetter(c) || isDigit(c) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

bool callsByName(std::string_view text, std::string_view name) {
    const std::string folded = foldCase(text), wanted = foldCase(name);
    if (wanted.empty())
        return false;
    for (auto at = folded.find(wanted); at != folded.npos; at = folded.find(wanted, at + 1)) {
        const std::size_t end = at + wanted.size();
        const bool begins = at == 0 || !isInWord(folded[at - 1]);
        if (begins && (end == folded.size() || !isInWord(folded[end])))
            return true;
    }
    return false;
}

} // namespace larkspin
