#include "chat/two_arguments.h"

#include "text/blanks.h"
#include "text/parts.h"
#include "text/utf8.h"

namespace larkspin {

std::optional<TwoArguments> twoArguments(std::string_view text) {
    const auto [first, after, isParted] = partedAt(text, ',');
    if (after.empty())
        return std::nullopt;
    return TwoArguments{std::string(withoutBlanks(first)),
                        std::string(withoutBlanks(after.substr(prefixLength(after, 1))))};
}

} // namespace larkspin
