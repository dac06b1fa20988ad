#include "irc/channels/irc_bans.h"

#include "irc/protocol/irc_features.h"
#include "text/parts.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace larkspin {

namespace {

// A mask with one of these before its "!" isn't about a single nick: wildcards, and the signs of
// other kinds of bans ("$a:account", "~q:bob!*@*").
constexpr std::string_view noNick = "*?$~:";

std::string_view rowOf(std::string_view mask) {
    const auto [nick, rest, isMask] = partedAt(mask, '!');
    const bool isAboutNick = isMask && !nick.empty() && nick.find_first_of(noNick) == nick.npos;
    return isAboutNick ? nick : mask;
}

} // namespace

void IrcBans::add(std::string_view mask, const IrcFeatures& features) {
    if (mask.empty() || mask.size() > longestMask || bans_.size() == most)
        return;
    std::string folded = features.fold(mask);
    if (std::ranges::find(bans_, folded, &Called::foldedMask) != bans_.end())
        return;
    const std::string_view row = rowOf(mask);
    bans_.push_back({std::string(mask), std::move(folded), std::string(row), features.fold(row)});
    isOld_ = true;
}

void IrcBans::call(const std::string& mask, const std::string& name, const IrcFeatures& features) {
    Called called{mask, features.fold(mask), name, features.fold(name)};
    std::erase_if(names_, [&](const Called& known) {
        return known.foldedMask == called.foldedMask && known.foldedRow == called.foldedRow;
    });
    if (names_.size() == most)
        names_.erase(names_.begin());
    names_.push_back(std::move(called));
    isOld_ = true;
}

void IrcBans::remove(std::string_view mask, const IrcFeatures& features) {
    const auto isThat = [folded = features.fold(mask)](const Called& called) {
        return called.foldedMask == folded;
    };
    std::erase_if(names_, isThat);
    std::erase_if(bans_, isThat);
    isOld_ = true;
}

// Each ban by all names that it has got, or else by what its mask is about.
std::vector<const IrcBans::Called*> IrcBans::called() const {
    std::vector<const Called*> all;
    for (const Called& ban : bans_) {
        const std::size_t before = all.size();
        for (const Called& named : names_)
            if (named.foldedMask == ban.foldedMask)
                all.push_back(&named);
        if (all.size() == before)
            all.push_back(&ban);
    }
    return all;
}

const RowList& IrcBans::rows() const {
    if (!std::exchange(isOld_, false))
        return rows_;
    std::vector<Row> rows;
    std::unordered_set<std::string_view> known;
    for (const Called* const ban : called())
        // Several masks may be about one nick, which is listed once.
        if (known.insert(ban->foldedRow).second)
            rows.emplace_back(ban->row);
    rows_.assign(rows);
    return rows_;
}

std::vector<std::string> IrcBans::masksOf(std::string_view row) const {
    std::vector<std::string> masks;
    const auto all = called();
    const auto meant = std::ranges::find(all, row, &Called::row);
    if (meant == all.end())
        return masks;
    for (const Called* const ban : all)
        if (ban->foldedRow == (*meant)->foldedRow)
            masks.push_back(ban->mask);
    // Those that the owner has set as well, in case that the server lists them in another form.
    for (const Called& ours : names_)
        if (ours.foldedRow == (*meant)->foldedRow &&
            std::ranges::find(bans_, ours.foldedMask, &Called::foldedMask) == bans_.end())
            masks.push_back(ours.mask);
    return masks;
}

} // namespace larkspin
