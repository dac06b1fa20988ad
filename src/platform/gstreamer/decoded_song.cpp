#include "platform/gstreamer/decoded_song.h"

#include "platform/gstreamer/chain_reader.h"
#include "platform/gstreamer/libav_reader.h"
#include "platform/gstreamer/marked_reader.h"

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
    const bool isMusepack = kind == SongKind::musepack7 || kind == SongKind::musepack8;
    if (kind == SongKind::adts || isMusepack)
        return MarkedReader::open(
            isMusepack ? musepackMarks(file) : adtsMarks(file), [&file, kind](std::uint64_t place) {
                return openWithLibav({file, place, file.size() - place}, kind);
            });
    return openWithLibav({file}, kind);
}

} // namespace larkspin
