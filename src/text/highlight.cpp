#include "text/highlight.h"

#include "text/canonical.h"
#include "text/fold.h"

namespace larkspin {

namespace {

// How many bytes of `text` match the folded `wanted` at its beginning; 0 when they don't. A match
// ends with a whole cluster, so that no letter is parted from its accent.
std::size_t lengthOf(std::string_view wanted, std::string_view text) {
    std::size_t length = 0;
    while (!wanted.empty() && length < text.size()) {
        const std::string_view rest = text.substr(length);
        const std::size_t cluster = clusterLength(rest);
        const std::string folded = foldCase(rest.substr(0, cluster));
        if (!wanted.starts_with(folded))
            return 0;
        wanted.remove_prefix(folded.size());
        length += cluster;
    }
    return wanted.empty() ? length : 0;
}

} // namespace

std::string highlight(std::string_view text, std::string_view find, std::string_view replacement) {
    const std::string wanted = foldCase(find);
    std::string result;
    while (!text.empty()) {
        const std::size_t hit = lengthOf(wanted, text);
        // Without a hit here the next one begins at the next whole cluster.
        const std::size_t length = hit > 0 ? hit : clusterLength(text);
        result += hit > 0 ? replacement : text.substr(0, length);
        text.remove_prefix(length);
    }
    return result;
}

} // namespace larkspin
