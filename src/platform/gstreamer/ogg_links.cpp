#include "platform/gstreamer/ogg_links.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace larkspin {

namespace {

// The header of a page, from the format's description (RFC 3533).
constexpr std::string_view capture = "OggS";
constexpr std::size_t flagsAt = 5, serialAt = 14, numberAt = 18, countAt = 26, pageHeader = 27,
                      mostSegments = 255;
constexpr int beginsStream = 2;
constexpr std::size_t longestPage = pageHeader + mostSegments * 256;

constexpr std::size_t mostLinks = 10'000;
constexpr std::uint64_t walkedThrough =
    std::size_t{1024} * 1024;       // bytes of a file that cost no time
constexpr std::uint64_t looks = 16; // at a larger one

struct Page {
    std::string serial;
    std::uint32_t number = 0; // in its stream
    bool begins = false;      // a stream
    std::uint64_t size = 0;
};

std::optional<Page> pageAt(const SongFile& file, std::uint64_t place) {
    std::string header(pageHeader + mostSegments, '\0');
    file.read(place, header);
    if (!header.starts_with(capture))
        return std::nullopt;
    const std::size_t segments = static_cast<unsigned char>(header[countAt]);
    Page page{header.substr(serialAt, 4), 0, (header[flagsAt] & beginsStream) != 0,
              pageHeader + segments};
    for (std::size_t byte = 4; byte-- > 0;) // the lowest first
        page.number = page.number << 8 | static_cast<unsigned char>(header[numberAt + byte]);
    for (const char length : header.substr(pageHeader, segments))
        page.size += static_cast<unsigned char>(length);
    return page;
}

// The streams that begin together at the file's start.
std::vector<std::string> firstSerials(const SongFile& file) {
    std::vector<std::string> serials;
    std::uint64_t place = 0;
    while (const auto page = pageAt(file, place)) {
        if (!page->begins)
            break;
        serials.push_back(page->serial);
        place += page->size;
    }
    return serials;
}

// Where the next page begins: a damaged place is passed over.
std::uint64_t nextPage(const SongFile& file, std::uint64_t place) {
    std::string bytes(longestPage, '\0');
    while (place < file.size()) {
        const std::string_view read(bytes.data(), file.read(place, bytes));
        const auto found = read.find(capture);
        if (found != read.npos)
            return place + found;
        if (read.size() < capture.size())
            break;
        place += read.size() - (capture.size() - 1);
    }
    return file.size();
}

// Whether the file is one link, by a look at some pages and at all of its last ones: they are of
// its first streams, and their numbers grow. A link that is a copy of another one has the same
// serial, but begins to count anew.
bool isOneLink(const SongFile& file) {
    std::map<std::string, std::uint32_t> reached; // number, by the serial of each stream
    for (const std::string& serial : firstSerials(file))
        reached[serial] = 0;
    const std::uint64_t end = file.size() - longestPage;
    std::uint64_t place = 0;
    for (std::uint64_t look = 1; place < file.size();) {
        const auto page = pageAt(file, place);
        if (page) {
            const auto stream = reached.find(page->serial);
            if (stream == reached.end() ||
                page->number < std::exchange(stream->second, page->number))
                return false;
        }
        place = place < end ? nextPage(file, end / looks * look++) : nextPage(file, place + 1);
    }
    return true;
}

} // namespace

std::vector<OggLink> oggLinks(const SongFile& file) {
    if (file.size() > walkedThrough && isOneLink(file))
        return {{0, file.size()}};
    std::vector<OggLink> links;
    bool hasBegun = false; // the page before was the beginning of a stream too
    for (std::uint64_t place = 0; place < file.size() && links.size() < mostLinks;) {
        const auto page = pageAt(file, place);
        if (!page) {
            place = nextPage(file, place + 1);
            continue;
        }
        if (page->begins && !hasBegun)
            links.push_back({place, 0});
        hasBegun = page->begins;
        place += page->size;
        if (!links.empty())
            links.back().size = std::min(place, file.size()) - links.back().start;
    }
    return links;
}

} // namespace larkspin
