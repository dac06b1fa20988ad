// The people of a room as an owner sees them: by their ranks, the highest ones first, and by name
// among those of one rank.
#pragma once

#include <string>
#include <vector>

namespace larkspin {

class ShownRoom;

struct PeopleRow {
    std::string name;
    std::string rank; // the sign of the highest one that he has; blank for none

    // In words, since whoever reads aloud skips signs: "ann, operator".
    std::string spoken() const;
};

std::vector<PeopleRow> peopleRows(const ShownRoom& room);

} // namespace larkspin
