// The words of the terminal itself, which begin with a slash: they work windows and menus by name,
// from their descriptions alone, and say lines in ways that typing can't. They aren't said in the
// room. What can't be done is told on the screen.
#pragma once

#include "host/slash_words.h"
#include "platform/terminal/terminal_desktop.h"
#include "shell/window.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class TerminalCommands {
public:
    // `roomWords` are words about rooms, which are offered beside the terminal's own. `say` says a
    // line in the room.
    TerminalCommands(ShowUnder show, TerminalDesktop& desktop, std::vector<SlashWord> roomWords,
                     std::function<void(const std::string& line)> say);
    TerminalCommands(const TerminalCommands&) = delete;
    TerminalCommands& operator=(const TerminalCommands&) = delete;

    // From now on these windows can be worked, and `/quit` calls the task. The windows must live
    // on.
    void connect(std::vector<Window*> windows, Task quit);

    // Which trigger the words for songs have, of which `/help` tells, too.
    void triggerBy(std::function<std::string()> trigger) { trigger_ = std::move(trigger); }

    void add(std::vector<SlashWord> words) { words_.add(std::move(words)); }
    const SlashWords& words() const { return words_; }

    // Does what a line says that is meant for the terminal.
    void run(const std::string& line) const { words_.run(line); }

private:
    struct Target { // a control that is shown
        Window& window;
        const Control& control; // gone, perhaps, after an event
        std::string name;
        std::string shownName;
    };
    void tell(const std::string& text) const { show_("terminal", text); }
    using Press = bool (*)(Window&, const std::string&, int);

    void addWindowWords();
    void addOtherWords(std::vector<SlashWord> roomWords,
                       std::function<void(const std::string& line)> say);

    // Each takes what stands after its word, and returns false when it can make no sense of that.
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

    bool pressOn(std::string_view rest, Press press);
    void setSlider(const Target& target, const std::string& value);
    void setCombo(const Target& target, const std::string& value);

    // Nothing when there is no such thing, which is told.
    Window* findWindow(std::string_view name) const;
    std::optional<Target> findControl(std::string_view name) const;
    std::optional<int> rowOf(const Target& target, std::string_view number) const;

    ShowUnder show_;
    TerminalDesktop& desktop_;
    SlashWords words_;
    std::vector<Window*> windows_;
    Task quit_ = [] {};
    std::function<std::string()> trigger_ = [] { return std::string("'"); };
};

} // namespace larkspin
