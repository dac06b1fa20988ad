#include "irc/channels/irc_name_list.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace larkspin {

void IrcNameList::add(const std::string& folded, std::string_view name) {
    if (name.empty() || name.size() > longestName || entries_.size() == RowList::limit)
        return;
    if (!entries_.try_emplace(folded, Entry{places_.size()}).second)
        return;
    places_.emplace_back(name);
    isOld_ = true;
}

void IrcNameList::remove(const std::string& folded) {
    const auto found = entries_.find(folded);
    if (found == entries_.end())
        return;
    places_[found->second.place] = {};
    entries_.erase(found);
    isOld_ = true;
    closeGaps();
}

void IrcNameList::rename(const std::string& folded, const std::string& newFolded,
                         std::string_view newName) {
    if (!entries_.contains(folded))
        return;
    if (newName.empty() || newName.size() > longestName)
        return remove(folded);
    if (folded != newFolded)
        remove(newFolded);
    auto entry = entries_.extract(folded);
    entry.key() = newFolded;
    places_[entry.mapped().place] = Row(newName);
    entries_.insert(std::move(entry));
    isOld_ = true;
}

// Closes the gaps only when most places are gaps, so that it costs little for each one who leaves.
void IrcNameList::closeGaps() {
    if (places_.size() <= 2 * entries_.size() + 64)
        return;
    std::vector<Entry*> inOrder(places_.size());
    for (auto& [folded, entry] : entries_)
        inOrder[entry.place] = &entry;
    std::vector<Row> closed;
    for (Entry* const entry : inOrder)
        if (entry) {
            closed.push_back(std::move(places_[entry->place]));
            entry->place = closed.size() - 1;
        }
    places_ = std::move(closed);
}

IrcPresence* IrcNameList::find(const std::string& folded) {
    const auto found = entries_.find(folded);
    return found == entries_.end() ? nullptr : &found->second.presence;
}

const IrcPresence* IrcNameList::find(const std::string& folded) const {
    const auto found = entries_.find(folded);
    return found == entries_.end() ? nullptr : &found->second.presence;
}

std::size_t IrcNameList::countFrom(std::string_view host, std::string_view user) const {
    return static_cast<std::size_t>(std::ranges::count_if(entries_, [&](const auto& entry) {
        const IrcPresence& presence = entry.second.presence;
        return presence.host == host && (user.empty() || presence.user == user);
    }));
}

const RowList& IrcNameList::rows() const {
    if (!std::exchange(isOld_, false))
        return rows_;
    std::vector<Row> names;
    for (const Row& row : places_)
        if (!row.text().empty())
            names.push_back(row);
    assert(names.size() == entries_.size()); // each one in the list has his place in it
    rows_.assign(names);
    return rows_;
}

} // namespace larkspin
