// The bar for the song in play, at the foot of the room's window: it draws what `SongInPlay` shows,
// and hands back what the owner does. It is brought up to date once per turn, in front of the
// loop's sleep, and only while it is in sight.
#pragma once

#include "platform/qt/room/bar_parts.h"
#include "playback/song_in_play.h"
#include "shell/event_loop.h"

#include <QWidget>
#include <functional>
#include <optional>
#include <string>

class QMenu;

namespace larkspin {

class PlayBar : public QWidget {
public:
    // Both must outlive it. The task is called at once when the owner presses something.
    PlayBar(EventLoop& loop, SongInPlay& song, Task pressed);

private:
    void layOut();
    void listen();
    bool isInSight() const;
    bool refresh(); // true when something has changed
    void showSong(const SongView& view);
    void showPosition(const SongView& view);
    void does(std::function<void(SongInPlay&)> what);
    void seek(int second);
    void openModes();

    EventLoop& loop_;
    SongInPlay& song_;
    Task pressed_;
    CutLabel& name_; // these belong to the layout
    QLabel& time_;
    BarButton& previous_;
    BarButton& play_;
    BarButton& next_;
    BarSlider& position_;
    BarSlider& volume_;
    BarButton& mode_;
    QMenu* modes_ = nullptr; // made when it is first wanted
    std::optional<SongView> shown_;
    std::optional<std::string> heldSong_; // the path of the song whose slider is being dragged
    bool isTouched_ = false;              // a slider has been moved since it was shown last
};

} // namespace larkspin
