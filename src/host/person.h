// Somebody in a list of the client's, as he stood there when it was read.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace larkspin {

class RowList;

struct Person {
    std::string name; // empty if it couldn't be read
    int row = 0;      // in that list, from 0

    // The list, by a number of the client's. What is asked for about the person isn't done once
    // the owner is in another room, where the row, or the name, is somebody else's.
    std::uint64_t list = 0;
};

using People = std::vector<Person>;

// All those of a list.
People listed(const RowList& names, std::uint64_t list);

} // namespace larkspin
