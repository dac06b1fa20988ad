#include "chat/two_arguments.h"

#include "text/utf8.h"

namespace larkspin {

namespace {

std::string trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

} // namespace

std::optional<TwoArguments> twoArguments(std::string_view text) {
    const auto comma = text.find(',');
    if (comma == std::string_view::npos || comma + 1 == text.size())
        return std::nullopt;
    const std::string_view behind = text.substr(comma + 1);
    return TwoArguments{trimmed(text.substr(0, comma)),
                        trimmed(behind.substr(prefixLength(behind, 1)))};
}

} // namespace larkspin
