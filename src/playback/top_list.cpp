#include "playback/top_list.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "playback/count_keys.h"
#include "shell/files.h"
#include "text/fold.h"
#include "text/number.h"
#include "text/parts.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr double secondsBetweenLines = 0.7;
constexpr double exactBelow = 9007199254740992; // 2^53: from there on a double loses digits

std::string shownCount(std::string_view text, double value) {
    if (value < exactBelow)
        return numberText(value);
    text.remove_prefix(text.find_first_of("123456789"));
    return std::string(text.substr(0, text.find_first_not_of("0123456789")));
}

// Counts that are the same number to a double are compared by their digits. The one with more
// digits is higher.
bool isPlayedMore(const CountedSong& a, const CountedSong& b) {
    if (a.value != b.value)
        return a.value > b.value;
    if (a.count.size() != b.count.size())
        return a.count.size() > b.count.size();
    if (a.count != b.count)
        return a.count > b.count;
    return lessFolded(b.title, a.title);
}

} // namespace

std::vector<CountedSong> readcounts(Files& files, const std::string& path) {
    const std::string contents = files.read(path).contents;
    std::vector<CountedSong> songs;
    for (std::string_view rest = contents; !rest.empty();) {
        std::string_view line = takePart(rest, '\n');
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        const auto [key, count, isSong] = partedAt(line, '=');
        const double value = numberOrZero(count);
        if (isSong)
            songs.push_back({titleOfCountKey(key), value, shownCount(count, value)});
    }
    return songs;
}

void keepMostPlayed(std::vector<CountedSong>& songs, std::size_t wanted) {
    const auto end = songs.begin() + static_cast<std::ptrdiff_t>(std::min(wanted, songs.size()));
    std::partial_sort(songs.begin(), end, songs.end(), isPlayedMore);
    songs.erase(end, songs.end());
}

void TopList::toplist(std::int32_t n) {
    std::vector<CountedSong> songs = readcounts(files_, countsFile_);
    const std::size_t all = songs.size(), wanted = static_cast<std::size_t>(std::max(n, 0));
    keepMostPlayed(songs, wanted);
    recitals_.begin("top <b>" + std::to_string(n) + "</b> most played songs", secondsBetweenLines,
                    [this, songs = std::move(songs), all, areFewer = all < wanted,
                     next = std::size_t{0}]() mutable {
                        if (std::exchange(areFewer, false)) {
                            reply_.saychat("there are only <b>" + std::to_string(all) +
                                           "</b> songs");
                            return std::optional(secondsBetweenLines);
                        }
                        if (next == songs.size())
                            return std::optional<double>();
                        const CountedSong& song = songs[next++];
                        reply_.saychat("<b>" + std::to_string(next) + "</b>.  " + song.title +
                                       ":  <b>" + song.count);
                        return std::optional(secondsBetweenLines);
                    });
}

} // namespace larkspin
