// What the owner has asked a server for, and its answers, which are told him as they come. Nothing
// that nobody has asked for is: servers send much of the kind by themselves, and in floods.
#pragma once

#include "irc/talk/irc_room_list.h"
#include "shell/event_loop.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class IrcSession;
struct IrcMessage;

class IrcAnswers {
public:
    using Tell = std::function<void(const std::string& text)>;

    // All must live on.
    IrcAnswers(EventLoop& loop, const IrcSession& session, Tell tell)
        : loop_(loop), session_(session), tell_(std::move(tell)) {}

    // So long an answer is waited for, and as much longer as the server takes for any; and of one
    // so many lines are told.
    static constexpr std::chrono::seconds longestAnswer{60}, longestOfAnything{10};
    static constexpr int most = 100;

    // To be called as the question goes out. Which ones there are stands in the source. What it
    // is about is a person or a room, or blank.
    enum class Question {
        person,
        formerPerson,
        away,
        roomModes,
        ownModes,
        masks,
        people,
        names,
        anything
    };
    void expect(Question question, const std::string& about = {});

    // The rooms, with what the server is to be asked; nothing if they are on their way already.
    std::optional<std::vector<std::string>> expectRooms(const std::string& pattern, int least);

    // True if it is an answer, which has been told.
    bool take(const IrcMessage& message);

    // Forgets what was asked for, as after the end of a connection.
    void clear();

private:
    struct Awaited {
        Question question;
        std::string about;
        Nanoseconds until;
        int told = 0;
    };

    bool takeRooms(const IrcMessage& message);
    bool takeTopicSetter(const IrcMessage& message);
    bool isOver(const Awaited& awaited) const;
    bool isAbout(const Awaited& awaited, const IrcMessage& message) const;
    void tell(Awaited& awaited, const IrcMessage& message);

    EventLoop& loop_;
    const IrcSession& session_;
    Tell tell_;
    std::vector<Awaited> awaited_;
    IrcRoomList rooms_;
    Nanoseconds roomsUntil_{};
    std::string topicOf_; // the channel about whose topic he has just been answered
};

} // namespace larkspin
