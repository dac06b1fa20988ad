// The whole screen of a terminal, drawn by the curses library, which finds out what has changed and
// knows the terminal's ways. The library writes to a file in memory, and its bytes go the road of
// all output (terminal/queued_output.h), since a terminal that takes nothing must not hold up the
// program; while it hasn't taken the last picture no other is made. Keys are read here as well.
#pragma once

#include "platform/terminal/queued_output.h"
#include "platform/terminal/screen/layers.h"
#include "shell/event_loop.h"

#include <memory>
#include <string>

namespace larkspin {

class Screen {
public:
    // Takes over the terminal. Nothing when it can't do what is needed, as with TERM=dumb: nothing
    // has happened to it then.
    static std::unique_ptr<Screen> open(PollLoop& loop, QueuedOutput& output);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    Layers layers;

    // Called when the terminal has gone, or its input has ended; in an event of its own.
    void whenGone(Task task);

    // Where the terminal has a title, it reads this.
    void setTitle(const std::string& title);
    void ring(); // the bell

    // Whether the mouse is taken, rather than left to the terminal, by which text can be copied.
    void takeMouse(bool takes);

    // Until `goOn` no strokes are handed on.
    void hold();
    void goOn();

    // Stops the process, as Ctrl-Z asks for, with the terminal as it was found.
    void suspend();

    // All is drawn anew, also what the terminal is thought to show already.
    void drawAnew();

    // Gives the terminal back. It shows then what it showed before.
    void close();

private:
    struct Parts;
    explicit Screen(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> parts_;
};

} // namespace larkspin
