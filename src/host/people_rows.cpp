#include "host/people_rows.h"

#include "host/shown_room.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <tuple>

namespace larkspin {

namespace {

// Where it stands among the people; `rank` counts from the highest one.
struct Standing {
    std::size_t rank;
    std::string_view folded;
    int row;
};

struct RankWord {
    std::string_view sign, word;
};
constexpr RankWord rankWords[] = {
    {"~", "owner"}, {"&", "admin"}, {"@", "operator"}, {"%", "half-operator"}, {"+", "voice"}};

} // namespace

std::string PeopleRow::spoken() const {
    const auto* const known = std::ranges::find(rankWords, rank, &RankWord::sign);
    const std::string word(known == std::end(rankWords) ? rank : known->word);
    return visibleName(name) + (word.empty() ? "" : ", ") + word;
}

std::vector<PeopleRow> peopleRows(const ShownRoom& room) {
    const RowList& people = room.people();
    const std::string signs = room.rankSigns();
    std::vector<Standing> standings;
    standings.reserve(static_cast<std::size_t>(people.count()));
    for (int row = 0; row < people.count(); ++row) {
        const std::string ranks = room.ranksOf(people.row(row));
        const std::size_t rank = ranks.empty() ? signs.npos : signs.find(ranks[0]);
        standings.push_back({std::min(rank, signs.size()), people.folded(row), row});
    }
    std::ranges::sort(standings, {}, [](const Standing& standing) {
        return std::tuple(standing.rank, standing.folded, standing.row);
    });
    std::vector<PeopleRow> rows;
    rows.reserve(standings.size());
    for (const Standing& standing : standings)
        rows.push_back({std::string(people.row(standing.row)),
                        standing.rank < signs.size() ? signs.substr(standing.rank, 1) : ""});
    return rows;
}

} // namespace larkspin
