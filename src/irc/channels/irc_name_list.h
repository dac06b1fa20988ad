// Names in the order in which they were told, each of them once. Any one of them is found, renamed
// and removed without a walk: when a network falls apart, tens of thousands leave one by one.
#pragma once

#include "text/row_list.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace larkspin {

class IrcNameList {
public:
    // Longer than any server's; what is longer isn't a name.
    static constexpr std::size_t longestName = 128;

    // Names are found by what they fold to. One that is there stays as it is; none comes to as many
    // as a list can hold.
    void add(const std::string& folded, std::string_view name);
    void remove(const std::string& folded);

    // Keeps the place and the ranks. Whoever had the new name is gone.
    void rename(const std::string& folded, const std::string& newFolded, std::string_view newName);

    // A set of bits; null for a name that isn't there. Good until the next change.
    std::uint64_t* ranks(const std::string& folded);
    const std::uint64_t* ranks(const std::string& folded) const;

    const RowList& rows() const;

private:
    struct Entry {
        std::size_t place = 0;
        std::uint64_t ranks = 0;
    };

    void closeGaps();

    std::unordered_map<std::string, Entry> entries_;
    std::vector<Row> places_; // blank where somebody has left

    // Made when it is asked for.
    mutable RowList rows_;
    mutable bool isOld_ = false;
};

} // namespace larkspin
