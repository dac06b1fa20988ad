// Names in the order in which they were told, each of them once. Any one of them is found, renamed
// and removed without a walk: when a network falls apart, tens of thousands leave one by one.
#pragma once

#include "text/row_list.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace larkspin {

// Somebody in the list: his ranks, a set of bits, and where he comes from; blank where it isn't
// known.
struct IrcPresence {
    std::uint64_t ranks = 0;
    std::string user, host;
    std::string account; // "*" for none

    bool hasAccount() const { return !account.empty() && account != "*"; }
};

class IrcNameList {
public:
    // Longer than any server's; what is longer isn't a name.
    static constexpr std::size_t longestName = 128;

    // Names are found by what they fold to. One that is there stays as it is; none comes to as many
    // as a list can hold.
    void add(const std::string& folded, std::string_view name);
    void remove(const std::string& folded);

    // Keeps the place, the ranks and the rest. Whoever had the new name is gone.
    void rename(const std::string& folded, const std::string& newFolded, std::string_view newName);

    // Null for a name that isn't there. Good until the next change.
    IrcPresence* find(const std::string& folded);
    const IrcPresence* find(const std::string& folded) const;

    // How many come from that host; with a user name, how many have that one there.
    std::size_t countFrom(std::string_view host, std::string_view user = {}) const;

    const RowList& rows() const;

private:
    struct Entry {
        std::size_t place = 0;
        IrcPresence presence = {};
    };

    void closeGaps();

    std::unordered_map<std::string, Entry> entries_;
    std::vector<Row> places_; // blank where somebody has left

    // Made when it is asked for.
    mutable RowList rows_;
    mutable bool isOld_ = false;
};

} // namespace larkspin
