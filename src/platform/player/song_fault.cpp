#include "platform/player/song_fault.h"

namespace larkspin {

std::string wordsOf(SongFault fault) {
    switch (fault) {
    case SongFault::empty:
        return "the file is empty";
    case SongFault::unread:
        return "the disk can't be read";
    case SongFault::noMedia:
        return "it is no media file";
    case SongFault::noSound:
        return "there is no sound in it";
    case SongFault::noDecoder:
        return "there is no decoder for it";
    case SongFault::damaged:
        return "it is damaged";
    default:
        return "";
    }
}

} // namespace larkspin
