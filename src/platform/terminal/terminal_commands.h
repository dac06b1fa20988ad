// The words of the terminal itself, which begin with a slash: they work windows and menus by name,
// from their descriptions alone, and say lines in ways that typing can't. They aren't said in the
// room. What can't be done is told on the screen.
#pragma once

#include "library/completion.h"
#include "platform/terminal/room_words.h"
#include "shell/window.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class OwnRoom;
class TerminalDesktop;
class TerminalScreen;

class TerminalCommands {
public:
    TerminalCommands(TerminalScreen& screen, TerminalDesktop& desktop, OwnRoom& room)
        : screen_(screen), desktop_(desktop), roomWords_(screen, room) {}

    // From now on these windows can be worked, and `/quit` calls the task. The windows must live
    // on.
    void connect(std::vector<Window*> windows, Task quit);

    // A line that opens with a slash and a letter is meant for the terminal, whether it knows the
    // word or not.
    static bool isMeantForIt(std::string_view line);
    static bool knows(std::string_view line);

    // What a slash with the beginning of a word can become.
    static Completion completionOf(std::string_view typed);

    // Of a line that is meant for the terminal.
    void run(const std::string& line);

private:
    struct Word;
    struct Target { // a control that is shown
        Window& window;
        const Control& control; // not to be touched behind an event
        std::string name;
        std::string shownName;
    };
    using Press = bool (*)(Window&, const std::string&, int);

    static std::span<const Word> words();
    static const Word* wordOf(std::string_view line);

    // Each takes what stands behind its word, and is false when it makes no sense of that.
    bool windows(std::string_view rest);
    bool show(std::string_view rest);
    bool click(std::string_view rest);
    bool doubleClick(std::string_view rest);
    bool select(std::string_view rest);
    bool key(std::string_view rest);
    bool set(std::string_view rest);
    bool hoverOver(std::string_view rest);
    bool menu(std::string_view rest);
    bool choose(std::string_view rest);
    bool tray(std::string_view rest);
    bool now(std::string_view rest) { return roomWords_.now(rest); }
    bool as(std::string_view rest) { return roomWords_.as(rest); }
    bool bye(std::string_view rest) { return roomWords_.bye(rest); }
    bool whisper(std::string_view rest) { return roomWords_.whisper(rest); }
    bool room(std::string_view rest) { return roomWords_.room(rest); }
    bool help(std::string_view rest);
    bool quit(std::string_view rest);

    bool pressOn(std::string_view rest, Press press);
    void setSlider(const Target& target, const std::string& value);
    void setCombo(const Target& target, const std::string& value);

    // Nothing, and told why, when there is no such thing.
    Window* findWindow(std::string_view name) const;
    std::optional<Target> findControl(std::string_view name) const;
    std::optional<int> rowOf(const Target& target, std::string_view number) const;

    TerminalScreen& screen_;
    TerminalDesktop& desktop_;
    RoomWords roomWords_;
    std::vector<Window*> windows_;
    Task quit_ = [] {};
};

} // namespace larkspin
