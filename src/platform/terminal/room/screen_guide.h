// What leads the owner about in the room on a terminal's screen: its menus, the song in play, the
// first steps while there are no songs, and links that open.
#pragma once

#include "app/first_steps.h"
#include "host/link_opening.h"

#include <string>

namespace larkspin {

class Program;
class ScreenRoom;

class ScreenGuide {
public:
    // Both must outlive it.
    ScreenGuide(ScreenRoom& room, Program& program, const std::string& manual);
    ScreenGuide(const ScreenGuide&) = delete;
    ScreenGuide& operator=(const ScreenGuide&) = delete;

    FirstSteps firstSteps;

private:
    LinkOpening links_;
};

} // namespace larkspin
