#include "host/window_room/room_notices.h"

namespace larkspin {

std::optional<Notice> RoomNotices::notice() {
    ClientNotices* const there = client_();
    return there ? there->notice() : std::nullopt;
}

void RoomNotices::confirm() {
    if (ClientNotices* const there = client_())
        there->confirm();
}

void RoomNotices::hide() {
    ClientNotices* const there = client_();
    if (!there)
        return;
    beforeHiding_();
    there->hide();
}

void RoomNotices::bringBack() {
    if (ClientNotices* const there = client_())
        there->bringBack();
}

std::optional<Transfer> RoomNotices::download() {
    ClientNotices* const there = client_();
    return there ? there->download() : std::nullopt;
}

} // namespace larkspin
