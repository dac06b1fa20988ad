// The first steps, above the line to type in while there are no songs: the lines that bring some,
// a button that does it all, and how far that is. The mouse presses them.
#pragma once

#include "app/first_steps.h"
#include "platform/terminal/room/room_styles.h"
#include "platform/terminal/screen/cells.h"

#include <functional>
#include <string>
#include <vector>

namespace larkspin {

class StepsPane {
public:
    // The steps must outlive it. `run` does what a line says, and `click` what a click on one
    // means.
    using TakeLine = std::function<void(const std::string& line)>;
    StepsPane(FirstSteps& steps, TakeLine run, TakeLine click)
        : steps_(steps), run_(std::move(run)), click_(std::move(click)) {}

    // What it shows, to be asked for before it is drawn. Whether that is another than before.
    bool refresh();
    int rows() const; // 0 while there is nothing to show

    void draw(Cells& cells, const Area& area, const RoomStyles& styles);

    // Whether a press was on something that does something.
    bool press(int row, int column);

private:
    struct Shown {
        bool isShown = false, isAskedFor = false;
        std::string title{}, progress{};
        std::vector<std::string> lines{}, does{};

        bool operator==(const Shown&) const = default;
    };
    void drawFoot(Cells& cells, const RoomStyles& styles);

    FirstSteps& steps_;
    TakeLine run_, click_;
    Shown shown_;
    Area area_, add_, hide_;
};

} // namespace larkspin
