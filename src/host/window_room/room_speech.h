// What is said from here in the client's room, until it is seen there: a line that isn't seen is
// told, and what the program says to a client that hangs is said once that answers, in its order.
#pragma once

#include "host/window_room/said_lines.h"
#include "shell/event_loop.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class Conversations;

class RoomSpeech {
public:
    // Says a line in the client's room, if that is still the one of that place. And what is told to
    // the owner.
    using Send = std::function<bool(const std::string& line, const std::string& place)>;
    using Answer = std::function<void(const std::string& text)>;

    RoomSpeech(EventLoop& loop, const Conversations& conversations, Send send, Answer answer);
    ~RoomSpeech() { forget(); }
    RoomSpeech(const RoomSpeech&) = delete;
    RoomSpeech& operator=(const RoomSpeech&) = delete;

    // In the room of that place. What the program says is held while the client hangs, and until
    // all before it has been said. False when it can't be said.
    bool say(SaidLine line, const std::string& place);

    // A line of the owner's is seen in the client. If it is one of these, it is that.
    SaidLines::Seen take(std::string_view text, SaidLine& said) { return said_.take(text, said); }

    // The program's line couldn't be said there: that is told, once for a room.
    void answerIsLost(const std::string& words);
    void roomIsNew() { isAnswerLost_ = false; }

    void clientHangs();
    void clientAnswers();
    void forget(); // all that hasn't been seen

private:
    // How long a line may take to be seen; how long before it is known that the client hangs it may
    // have taken none; and how long one that answers again has to show those that it has taken.
    static constexpr std::chrono::seconds longestUnseen{10}, beforeHanging{1}, untilShown{2};

    bool isHolding() const { return hangs_ || sayingAgain_ != TimerId::none; }
    void note(SaidLine line, const std::string& place);
    void tellLost();
    void tellUnseen(const SaidLine& lost, const std::string& in);
    void sayAgain();

    EventLoop& loop_;
    const Conversations& conversations_;
    Send send_;
    Answer answer_;
    SaidLines said_;
    bool hangs_ = false, isAnswerLost_ = false;
    Nanoseconds hangsSince_{};
    TimerId losing_ = TimerId::none, sayingAgain_ = TimerId::none;
};

} // namespace larkspin
