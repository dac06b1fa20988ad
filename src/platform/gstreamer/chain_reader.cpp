#include "platform/gstreamer/chain_reader.h"

#include <algorithm>
#include <utility>

namespace larkspin {

OpenedSong ChainReader::open(const std::vector<OggLink>& links, Open open) {
    auto chain = std::make_unique<ChainReader>();
    SongFault fault{};
    SongTags tags; // of the first song in it
    for (const OggLink& part : links) {
        OpenedSong link = open(part);
        fault = link.fault;
        if (!link.reader)
            continue;
        chain->links_.push_back({part, chain->duration_});
        chain->duration_ += link.reader->duration();
        if (!chain->reader_) {
            chain->reader_ = std::move(link.reader);
            tags = std::move(link.tags);
        }
    }
    if (chain->links_.empty())
        return {nullptr, fault};
    chain->open_ = std::move(open);
    return {std::move(chain), {}, tags};
}

bool ChainReader::enter(std::size_t link) {
    auto reader = open_(links_[link].part).reader;
    if (!reader)
        return false;
    reader_ = std::move(reader);
    link_ = link;
    return true;
}

void ChainReader::read(std::vector<float>& samples) {
    reader_->read(samples);
    while (samples.empty() && link_ + 1 < links_.size() && enter(link_ + 1))
        reader_->read(samples);
}

void ChainReader::seek(double seconds) {
    const auto after =
        std::upper_bound(links_.begin() + 1, links_.end(), seconds,
                         [](double wanted, const Link& link) { return wanted < link.begin; });
    const auto wanted = static_cast<std::size_t>(after - links_.begin()) - 1;
    if (wanted == link_ || enter(wanted))
        reader_->seek(seconds - links_[link_].begin);
}

} // namespace larkspin
