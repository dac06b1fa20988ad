#include "platform/gstreamer/ogg_links.h"

#include <algorithm>
#include <optional>
#include <string>

namespace larkspin {

namespace {

// The header of a page, from the format's description (RFC 3533).
constexpr std::string_view capture = "OggS";
constexpr std::size_t flagsAt = 5, serialAt = 14, countAt = 26, pageHeader = 27, mostSegments = 255;
constexpr int beginsStream = 2;
constexpr std::size_t longestPage = pageHeader + mostSegments * 256;

constexpr std::size_t mostLinks = 10'000;

struct Page {
    std::string serial;
    bool begins = false; // a stream
    std::uint64_t size = 0;
};

std::optional<Page> pageAt(const SongFile& file, std::uint64_t place) {
    std::string header(pageHeader + mostSegments, '\0');
    const std::size_t got = file.read(place, header);
    if (got < pageHeader || !header.starts_with(capture))
        return std::nullopt;
    const std::size_t segments = static_cast<unsigned char>(header[countAt]);
    Page page{header.substr(serialAt, 4), (header[flagsAt] & beginsStream) != 0,
              pageHeader + segments};
    for (const char length : header.substr(pageHeader, segments))
        page.size += static_cast<unsigned char>(length);
    return page;
}

// The streams that begin together at the file's start, and the serial of its last page.
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

std::string lastSerial(const SongFile& file) {
    const std::uint64_t place = file.size() - std::min<std::uint64_t>(file.size(), longestPage);
    std::string end(longestPage, '\0');
    end.resize(file.read(place, end));
    const auto last = end.rfind(capture);
    return last == end.npos || last + pageHeader > end.size() ? "" : end.substr(last + serialAt, 4);
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

} // namespace

std::vector<OggLink> oggLinks(const SongFile& file) {
    const auto serials = firstSerials(file);
    if (std::ranges::find(serials, lastSerial(file)) != serials.end())
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
