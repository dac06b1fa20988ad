// Whom a channel keeps out: the masks of its bans, and what they are called in a list. That is the
// name that somebody had when the owner put him out; of others' bans the nick where a mask is about
// a nick ("bob!*@*"), otherwise the mask.
#pragma once

#include "text/row_list.h"

#include <string>
#include <string_view>
#include <utility>
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

    // The ban on the mask, which may be set only later, is called by that name for as long as it
    // lasts, or by several names if it keeps out several people. These names outlive a connection,
    // since no server keeps them.
    void call(const std::string& mask, const std::string& name, const IrcFeatures& features);
    struct Called {
        std::string mask, foldedMask;
        std::string row, foldedRow;
    };
    const std::vector<Called>& names() const { return names_; }
    void takeNames(std::vector<Called> names) { names_ = std::move(names); }

private:
    std::vector<const Called*> called() const;

    std::vector<Called> bans_, names_;

    // Made when it is asked for.
    mutable RowList rows_;
    mutable bool isOld_ = false;
};

} // namespace larkspin
