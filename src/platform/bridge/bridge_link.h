// Questions to the bridge and its answers. A question waits for its answer, for a moment, and no
// event of this program's is served meanwhile.
//
// A bridge that hasn't answered in time hangs: until that answer has come nothing more is asked,
// and every question has none, at once. One that never comes, or what the other side says that
// can't be so, ends the connection. Events come in turns of their own, and one of them may close
// it.
#pragma once

#include "platform/bridge/bridge_process.h"
#include "platform/bridge/bridge_wire.h"
#include "platform/posix/watching_loop.h"

#include <functional>
#include <optional>
#include <string>

namespace larkspin {

class BridgeLink {
public:
    struct Events {
        Task up;                                           // the bridge has greeted
        Task answersAgain;                                 // what it took too long for has come
        std::function<void(const std::string& body)> seen; // the newest that it has seen
        std::function<void(const std::string& why)> ended; // by the other side
    };
    BridgeLink(WatchingLoop& loop, Events events);
    ~BridgeLink() { close(); }
    BridgeLink(const BridgeLink&) = delete;
    BridgeLink& operator=(const BridgeLink&) = delete;

    // How long it is waited for before the connection ends, with everything served meanwhile.
    struct Patience {
        Nanoseconds greeting = std::chrono::seconds(30), lateAnswer = std::chrono::seconds(30);
    };
    void open(BridgePipes pipes, Patience patience);
    void close(); // no event comes after that

    // The answer's body.
    std::optional<std::string> ask(bridge::Kind kind, std::string body);

    std::uint32_t questions() const { return lastNumber_; } // that were asked so far

    // A question was written, and its answer is still to come.
    bool isHung() const { return isUp() && isLate_; }

    void giveUp(const std::string& why); // as if the other side had ended it
    static constexpr const char* unreadable = "the bridge says what can't be read";

private:
    bool isUp() const { return pipes_.answers.isOpen() && hasGreeted_; }
    bool isAsked() const { return asked_.number != 0; } // and has no answer yet
    void hear();
    void readOnce();
    void take(bridge::Frame frame);
    void takeGreeting(const bridge::Frame& frame);
    void takeAnswer(bridge::Frame frame);
    void takeSeen(bridge::Frame frame);
    void exchange(Nanoseconds latest);
    void write();
    void finishWriting();
    void waitFor(int milliseconds) const;
    void drop();
    void tellSeen();

    struct Asked {
        bridge::Kind kind = bridge::Kind::greeting;
        std::uint32_t number = 0; // 0 for none
    };

    WatchingLoop& loop_;
    Events events_;
    BridgePipes pipes_;
    Patience patience_;
    bridge::FrameReader reader_;
    bool hasGreeted_ = false;
    std::uint32_t lastNumber_ = 0;
    Asked asked_;
    bool isLate_ = false; // the answer, and nobody waits for it
    std::optional<std::string> answer_, seen_;
    std::string unwritten_;
    Nanoseconds toldSeen_{};
    TimerId greeting_ = TimerId::none, late_ = TimerId::none, again_ = TimerId::none,
            seeing_ = TimerId::none, ending_ = TimerId::none;
};

} // namespace larkspin
