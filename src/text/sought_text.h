// A text that the owner types to find rows or paths by. A backslash or bar in it is found where it
// parts a row, and where it is a character of a name.
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
