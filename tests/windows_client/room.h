// A room of the client's: what is said in it, who is there, and the buttons to put them out.
#pragma once

#include "person_list.h"
#include "text_fields.h"

#include <string>

namespace larkspin::client {

class Room {
public:
    void open(HWND parent, const std::string& caption); // in place of the one before
    void close() { takeAway(window_); }
    HWND window() const { return window_; }

    HWND input() const { return firstChild(window_, "RICHCNTL"); } // the line

    void owns(bool itsOwner); // sees who was put out
    void signOn(const std::string& screenName) { screenName_ = screenName; }

    PersonList people, ejected;
    RunningText said;

private:
    Answer answer(const Message& message);
    void enter(const std::string& text);
    void press(const std::string& button);

    HWND window_ = nullptr;
    bool isOwned_ = false;
    std::string screenName_;
};

} // namespace larkspin::client
