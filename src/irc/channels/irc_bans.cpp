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
    Ban ban{
        .mask = std::string(mask), .row = {}, .foldedMask = features.fold(mask), .foldedRow = {}};
    if (std::ranges::find(bans_, ban.foldedMask, &Ban::foldedMask) != bans_.end())
        return;
    const auto named = std::ranges::find(names_, ban.foldedMask, &Named::foldedMask);
    name(ban, named == names_.end() ? rowOf(mask) : named->name, features);
    bans_.push_back(std::move(ban));
}

void IrcBans::name(Ban& ban, std::string_view row, const IrcFeatures& features) {
    ban.row = row;
    ban.foldedRow = features.fold(row);
    isOld_ = true;
}

void IrcBans::call(const std::string& mask, const std::string& called,
                   const IrcFeatures& features) {
    const std::string folded = features.fold(mask);
    std::erase_if(names_, [&](const Named& named) { return named.foldedMask == folded; });
    if (names_.size() == most)
        names_.erase(names_.begin());
    names_.push_back({mask, folded, called});
    const auto found = std::ranges::find(bans_, folded, &Ban::foldedMask);
    if (found != bans_.end())
        name(*found, called, features);
}

void IrcBans::remove(std::string_view mask, const IrcFeatures& features) {
    const std::string folded = features.fold(mask);
    std::erase_if(names_, [&](const Named& named) { return named.foldedMask == folded; });
    const auto found = std::ranges::find(bans_, folded, &Ban::foldedMask);
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
    // Those that the owner has set as well, in case that the server lists them in another form.
    for (const Named& ours : names_)
        if (ours.name == row &&
            std::ranges::find(bans_, ours.foldedMask, &Ban::foldedMask) == bans_.end())
            masks.push_back(ours.mask);
    return masks;
}

} // namespace larkspin
