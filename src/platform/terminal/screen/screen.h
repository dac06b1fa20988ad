// The whole screen of a terminal: what its layers draw is shown, and what the owner's hand does
// goes to them. Bytes go the road of all output (terminal/queued_output.h), since a terminal that
// takes nothing must not hold up the program; while it hasn't taken the last picture no other is
// made, and no more of them than an eye can follow.
#pragma once

#include "platform/terminal/queued_output.h"
#include "platform/terminal/screen/curses_picture.h"
#include "platform/terminal/screen/layers.h"
#include "platform/terminal/screen/owned_terminal.h"
#include "platform/terminal/screen/stroke_reader.h"
#include "shell/event_loop.h"

#include <deque>
#include <memory>
#include <string>

namespace larkspin {

class Screen {
public:
    // Takes over the terminal on standard input and this output; as soon as it is this job's, if it
    // is another's now. Nothing when it can't do what is needed, as with TERM=dumb: nothing has
    // happened to it then. The screen must live as long as the loop.
    static std::unique_ptr<Screen> open(PollLoop& loop, QueuedOutput& output);
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    // Strokes that none of them takes are the screen's: Ctrl-L draws anew, and Ctrl-Z stops the
    // process.
    Layers layers;

    // Called when the terminal has gone, or its input has ended.
    void whenGone(Task task) { whenGone_ = std::move(task); }

    // Where the terminal has a title, it reads this.
    void setTitle(const std::string& title);
    void ring(); // the bell

    // Whether the mouse is taken, rather than left to the terminal, by which text can be copied.
    void takeMouse(bool takes);

    // Until `goOn` no strokes are handed on.
    void hold() { isHeld_ = true; }
    void goOn();

    // Stops the process, as Ctrl-Z asks for, with the terminal as it was found.
    void suspend();

    // All is drawn anew, also what the terminal is thought to show already.
    void drawAnew();

    // Gives the terminal back. It shows then what it showed before.
    void close();

private:
    Screen(PollLoop& loop, QueuedOutput& output, std::unique_ptr<CursesPicture> picture);
    void look();
    void leave();
    void hear();
    void bytesCame();
    void awaitRest();
    void bring(std::vector<Stroke> strokes);
    void deliverLater();
    void deliver();
    void takeUnclaimed(const Stroke& stroke);
    void draw();

    PollLoop& loop_;
    QueuedOutput& output_;
    std::unique_ptr<CursesPicture> picture_;
    OwnedTerminal terminal_;
    StrokeReader reader_;
    std::deque<Stroke> strokes_; // that are still to be handed on
    Task whenGone_ = [] {};
    std::string title_, shownTitle_;
    Nanoseconds drawnAt_ = Nanoseconds::min();
    TimerId nextDraw_ = TimerId::none;
    TimerId latestDraw_ = TimerId::none; // while anything that has changed isn't seen
    TimerId incomplete_ = TimerId::none; // after which the rest of a key isn't expected any more
    TimerId look_ = TimerId::none;       // for the terminal, while it is another's
    bool isOpen_ = true;
    bool isOurs_ = false;  // the terminal
    bool isShown_ = false; // a picture, and the modes that go with it
    bool takesMouse_ = true, mouseIsTaken_ = false;
    bool drawsAnew_ = true;
    bool isHeld_ = false, isDelivering_ = false;
};

} // namespace larkspin
