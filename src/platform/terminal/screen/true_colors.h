// Colours as they are on terminals that show any, but whose descriptions know 256 by number: each
// gets a number for a while, and where the curses library writes that number, the colour itself is
// written.
#pragma once

#include "platform/terminal/screen/cells.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class TrueColors {
public:
    // That of the nearest one when there is no number left.
    int numberOf(Rgb color);

    // Whether numbers should be given anew, with a picture that is drawn anew as a whole.
    bool isNearlyFull() const { return colors_.size() > most / 2; }
    void clear() { colors_.clear(); }

    std::string in(std::string_view bytes) const;

private:
    static constexpr std::size_t first = 16,
                                 most = 240; // the first ones have sequences of their own

    std::vector<Rgb> colors_; // by their numbers
};

} // namespace larkspin
