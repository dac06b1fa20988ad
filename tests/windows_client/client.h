// The client's frame and what comes and goes in and beside it.
#pragma once

#include "plain_window.h"
#include "room.h"
#include "text_fields.h"

#include <string>
#include <vector>

namespace larkspin::client {

class Client {
public:
    using Texts = std::vector<std::string>;

    explicit Client(std::function<void()> ended) : ended_(std::move(ended)) {}

    void open(); // the frame, where nobody is signed on
    void caption(const std::string& caption) { SetWindowTextA(frame_, caption.c_str()); }
    void signOn(const std::string& screenName); // nobody with an empty one
    void greet(const std::string& caption);     // in place of the greeting before
    void enterRoom(const std::string& caption) { room.open(area_, caption); }
    void enterSecondRoom(const std::string& caption) { second.open(area_, caption); }
    void opens(bool itDoes) { opensWindows_ = itDoes; }
    void clock(const std::string& text) { clock_ = text; }

    // Windows of transfers and notices, in place of the one before; none without a caption.
    void showModal(const std::string& caption, const Texts& texts);
    void showDownload(const std::string& caption, const Texts& texts);

    Room room, second;

private:
    Answer answerFrame(const Message& message);
    Answer answerChild(const Message& message); // of a window that is told about
    Handler told();
    HWND child(const std::string& caption, const Place& place);
    void go(const std::string& place);
    void arrive();
    void openMessage(const std::string& addressee);
    void openClock();
    void openBox();
    void sendMessage(HWND window);

    std::function<void()> ended_;
    HWND frame_ = nullptr, area_ = nullptr, welcome_ = nullptr, modal_ = nullptr,
         download_ = nullptr;
    Texts places_; // that are on their way
    bool opensWindows_ = true;
    std::string clock_ = "You have been online for. 12 minutes.";
};

} // namespace larkspin::client
