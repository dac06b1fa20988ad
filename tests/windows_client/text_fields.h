// The two fields of a room: the text that runs, and the line that is written into.
#pragma once

#include "plain_window.h"

#include <functional>
#include <string>

namespace larkspin::client {

class RunningText {
public:
    void show(HWND parent, const Place& place);

    // Another line, in which ends of lines are blanks. Of a text beyond the limit the head is
    // dropped, wherever that is.
    void say(const std::string& name, const std::string& text);
    void fill(std::size_t size); // to so many bytes, if it is shorter by a line at least
    void clear();
    void limit(std::size_t bytes) { limit_ = bytes; }

private:
    Answer answer(const Message& message);
    void changed();

    HWND window_ = nullptr;
    std::string text_;
    std::size_t limit_ = std::string::npos;
};

// A line to be written into. What stands in it is told when Return comes, and it is empty then.
using Entered = std::function<void(const std::string& text)>;
void inputLine(HWND parent, const char* className, const Place& place, Entered entered);

} // namespace larkspin::client
