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
    if (std::ranges::find(bans_, folded, &Ban::foldedMask) != bans_.end())
        return;
    const std::string_view row = rowOf(mask);
    bans_.push_back({std::string(mask), std::string(row), std::move(folded), features.fold(row)});
    isOld_ = true;
}

void IrcBans::remove(std::string_view mask, const IrcFeatures& features) {
    const auto found = std::ranges::find(bans_, features.fold(mask), &Ban::foldedMask);
    if (found == bans_.end())
        return;
    bans_.erase(found);
    isOld_ = true;
}

const RowList& IrcBans::rows() const {
    if (!std::exchange(isOld_, false))
        return rows_;
    std::vector<Row> rows;
    std::unordered_set<std::string_view> known;
    for (const Ban& ban : bans_)
        // Several masks may be about one nick, which is listed once.
        if (known.insert(ban.foldedRow).second)
            rows.emplace_back(ban.row);
    rows_.assign(rows);
    return rows_;
}

std::vector<std::string> IrcBans::masksOf(std::string_view row) const {
    std::vector<std::string> masks;
    const auto named = std::ranges::find(bans_, row, &Ban::row);
    if (named == bans_.end())
        return masks;
    for (const Ban& ban : bans_)
        if (ban.foldedRow == named->foldedRow)
            masks.push_back(ban.mask);
    return masks;
}

} // namespace larkspin
