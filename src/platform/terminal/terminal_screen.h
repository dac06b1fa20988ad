// What the owner is shown, line by line: the room, and events that open with a head such as
// "[box]". On a terminal it is styled, if that can be; for scripts it is a protocol of one event a
// line, with line breaks inside a text as `\n` and `\r`. Lines that the reader doesn't take in time
// are dropped, and one line tells how many.
#pragma once

#include "platform/terminal/queued_output.h"
#include "shell/event_loop.h"

#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

class TerminalScreen {
public:
    enum class Form { styled, plain, protocol };

    // Notes go to an output of their own, which may be the same.
    TerminalScreen(QueuedOutput& output, QueuedOutput& notes, Form form);

    // A line of the room, with the client's markup. What others say gives way to the owner's. A
    // stamp in front is for eyes alone.
    enum class Speaker { owner, other };
    void showLine(const std::string& name, const std::string& text,
                  Speaker speaker = Speaker::owner, const std::string& stamp = {});

    // Anything else, as plain text. The head stands in brackets.
    void show(std::string_view head, const std::string& text);

    // What happens in the room beside what is said there, dimmed, with the head "[room]".
    void showRoom(const std::string& text, Speaker speaker = Speaker::other,
                  const std::string& stamp = {});

    // What the front end itself has to say.
    void tell(const std::string& text) { show("terminal", text); }

    // What the program has to say about itself, such as that there is no sound device.
    void note(const std::string& line);

    // What is to be shown before anything that stands beside the lines of the rooms.
    void before(Task task) { before_ = std::move(task); }

private:
    std::string styled(std::string_view style, const std::string& text) const;
    std::string stamped(const std::string& stamp) const;
    void put(QueuedOutput& output, const std::string& line, Speaker speaker = Speaker::owner);

    QueuedOutput& output_;
    QueuedOutput& notes_;
    Form form_;
    Task before_ = [] {};
};

} // namespace larkspin
