// The bar for the song in play, on one row: marks to go back, to play or pause and to go on, its
// name, the time, a slider for the position, the volume and the mode. What has no room is left out,
// the least needed first. The mouse works its parts.
#pragma once

#include "platform/terminal/room/room_styles.h"
#include "platform/terminal/screen/cells.h"
#include "platform/terminal/screen/strokes.h"
#include "playback/song_in_play.h"

#include <functional>
#include <string>
#include <utility>

namespace larkspin {

class SongPane {
public:
    struct Works {
        Task previous, playOrPause, next;
        std::function<void(int second, const std::string& path)> moveTo; // of the song shown
        std::function<void(int volume)> setVolume;
        Task openModes; // a menu of them
    };
    explicit SongPane(Works works) : works_(std::move(works)) {}

    void draw(Cells& cells, const Area& area, const SongView& view, const RoomStyles& styles);

    // Whether it makes anything of what the mouse does.
    bool take(const MouseStroke& stroke);

private:
    int drawLeft(Cells& cells, const RoomStyles& styles);
    int drawRight(Cells& cells, const RoomStyles& styles);
    void drawSlider(Cells& cells, const Area& area, int value, int most, const RoomStyles& styles);
    bool press(const MouseStroke& stroke);
    void turn(const MouseStroke& stroke);
    void drag(const MouseStroke& stroke);

    enum class Held { nothing, position, volume };
    Works works_;
    SongView view_;
    Area area_, previous_, play_, next_, position_, volume_, mode_; // the slider of the volume
    Held held_ = Held::nothing;                                     // by the mouse
};

} // namespace larkspin
