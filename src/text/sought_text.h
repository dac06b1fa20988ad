// A text that the owner types to find rows or paths by. A backslash or bar in it matches one that
// separates the parts of a row or path as well as one that belongs to a name.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

class SoughtText {
public:
    explicit SoughtText(std::string_view typed);

    // Whether what has been folded contains it.
    bool isIn(std::string_view folded) const;

private:
    std::string plain_, ofName_; // the same unless it has such a character
};

} // namespace larkspin
