// What is said in the conversation in front, under its name and topic. Each conversation is read
// where it was left. One document is filled anew for each: ten would take ten times the memory, and
// filling it is quick, since it holds only what is near.
#pragma once

#include "host/new_lines.h"
#include "host/reading.h"
#include "platform/qt/room/transcript.h"
#include "shell/event_loop.h"

#include <QWidget>
#include <cstdint>
#include <utility>

class QLabel;
class QPushButton;

namespace larkspin {

class Conversation;
class Conversations;
class CutLabel;
class ShownRoom;

class ConversationView : public QWidget {
public:
    // All must outlive it.
    ConversationView(EventLoop& loop, const ShownRoom& room, const Conversations& conversations);

    static constexpr int underHead = 4; // pixels

    Transcript& said() { return said_; }

    struct Shown {
        bool isAny = false;   // of what it shows has changed
        bool hasNews = false; // by such lines people come and go
        bool isOther = false; // conversation
    };
    // What is new, once before the thread sleeps.
    Shown showNew();

    // The name and the topic as they are now.
    void showRoom();

    // All is filled in anew, as when the unread begins elsewhere.
    void refill() { isFilled_ = keepsMark_ = false; }
    // As that, when it only looks otherwise: what he has seen come doesn't become unread.
    void redraw() { keepsMark_ |= std::exchange(isFilled_, false); }

    // Whether each line has its time in front.
    void stamp(bool stamps);
    void colorNames(bool colors);

    // The last line comes into view, as when the owner has said something.
    void toEnd();

private:
    void layOut();
    void fill(const Conversation& conversation, std::size_t least);
    void addLines(const Conversation& conversation, std::size_t first, std::size_t end);
    void addRest(std::size_t most);
    void leave();
    void take(const KeptLine& line, Shown& shown);
    void addOlder();
    void scrolled();
    void countNew();
    void placeButton();
    void resizeEvent(QResizeEvent* event) override;

    EventLoop& loop_;
    const ShownRoom& room_;
    const Conversations& conversations_;
    NewLines newLines_;
    Reading reading_;
    Transcript& said_; // these belong to its layout
    QLabel& name_;
    CutLabel& topic_;
    QPushButton& newBelow_;
    std::uint64_t shownUpTo_ = 0; // the number of the last line of the conversation
    std::uint64_t lastShown_ = 0; // of what stands there
    bool isWhole_ = true;         // nothing comes after that one
    bool isFilled_ = true, isAddingOlder_ = false;
    bool isShowing_ = false, keepsMark_ = false;
};

} // namespace larkspin
