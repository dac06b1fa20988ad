#include "irc/protocol/irc_wildcards.h"

namespace larkspin {

// After a failure all goes on from the last star, which takes one byte more then.
bool fitsIrcMask(std::string_view text, std::string_view mask) {
    std::size_t at = 0, in = 0, star = mask.npos, taken = 0;
    while (at < text.size()) {
        if (in < mask.size() && mask[in] == '*') {
            star = in++;
            taken = at;
        } else if (in < mask.size() && (mask[in] == '?' || mask[in] == text[at])) {
            ++in;
            ++at;
        } else if (star != mask.npos) {
            in = star + 1;
            at = ++taken;
        } else {
            return false;
        }
    }
    while (in < mask.size() && mask[in] == '*')
        ++in;
    return in == mask.size();
}

} // namespace larkspin
