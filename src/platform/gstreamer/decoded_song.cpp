#include "platform/gstreamer/decoded_song.h"

#include "platform/gstreamer/adts_reader.h"
#include "platform/gstreamer/chain_reader.h"
#include "platform/gstreamer/libav_reader.h"

namespace larkspin {

namespace {

OpenedSong openOgg(const SongFile& file) {
    const auto links = oggLinks(file);
    if (links.size() < 2)
        return openWithLibav({file}, SongKind::ogg);
    return ChainReader::open(links, [&file](const OggLink& link) {
        return openWithLibav({file, link.start, link.size}, SongKind::ogg);
    });
}

} // namespace

OpenedSong openDecoded(const SongFile& file, SongKind kind) {
    if (kind == SongKind::ogg)
        return openOgg(file);
    if (kind == SongKind::adts)
        return AdtsReader::open(file, [&file](std::uint64_t place) {
            return openWithLibav({file, place, file.size() - place}, SongKind::adts);
        });
    return openWithLibav({file}, kind);
}

} // namespace larkspin
