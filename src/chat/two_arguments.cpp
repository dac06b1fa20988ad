#include "chat/two_arguments.h"

#include "text/blanks.h"
#include "text/utf8.h"

namespace larkspin {

std::optional<TwoArguments> twoArguments(std::string_view text) {
    const auto comma = text.find(',');
    if (comma == std::string_view::npos || comma + 1 == text.size())
        return std::nullopt;
    const std::string_view after = text.substr(comma + 1);
    return TwoArguments{std::string(withoutBlanks(text.substr(0, comma))),
                        std::string(withoutBlanks(after.substr(prefixLength(after, 1))))};
}

} // namespace larkspin
