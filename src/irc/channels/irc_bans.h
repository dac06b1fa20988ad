// Whom a channel keeps out: the masks of its bans, and what they are called in a list.
#pragma once

#include "text/row_list.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct IrcFeatures;

class IrcBans {
public:
    // More than servers keep, and longer than their lines: what is beyond isn't kept.
    static constexpr std::size_t most = 4096, longestMask = 512;

    void add(std::string_view mask, const IrcFeatures& features);
    void remove(std::string_view mask, const IrcFeatures& features);

    const RowList& rows() const;
    std::vector<std::string> masksOf(std::string_view row) const;

private:
    struct Ban {
        std::string mask, row;
        std::string foldedMask, foldedRow;
    };

    std::vector<Ban> bans_;

    // Made when it is asked for.
    mutable RowList rows_;
    mutable bool isOld_ = false;
};

} // namespace larkspin
