#include "irc/talk/irc_answers.h"

#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/talk/irc_answer_words.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

using Question = IrcAnswers::Question;

constexpr std::size_t mostAwaited = 20;

// The numbers that answer it, of which there are none in a row where all do that are about it; and
// the ones with which the answer ends.
constexpr struct {
    Question question;
    std::string_view numbers, ends;
    const char* nothing; // told if there is no other answer
} kindsOfAnswers[] = {
    {Question::person, "", "318", ""},
    {Question::formerPerson, "", "369", ""},
    {Question::away, "305 306", "305 306", ""},
    {Question::roomModes, "324 329", "329", ""},
    {Question::ownModes, "221", "221", ""},
    {Question::masks, "346 347 348 349 367 368 728 729", "347 349 368 729",
     "there is nobody there"},
    {Question::people, "352 315", "315", "there is nobody there"},
    {Question::names, "353 366", "366", "there is nobody there"},
    {Question::anything, "", "", ""},
};

const auto& kindOf(Question question) {
    return *std::ranges::find_if(kindsOfAnswers,
                                 [=](const auto& kind) { return kind.question == question; });
}

} // namespace

void IrcAnswers::expect(Question question, const std::string& about) {
    // A question may be asked twice before its first answer. What has no end is asked anew.
    const bool isEndless = kindOf(question).ends.empty();
    std::erase_if(awaited_, [&](const Awaited& each) {
        return isOver(each) || (isEndless && each.question == question);
    });
    if (awaited_.size() >= mostAwaited)
        awaited_.erase(awaited_.begin());
    const Nanoseconds span = question == Question::anything ? longestOfAnything : longestAnswer;
    awaited_.push_back({question, about, loop_.now() + span});
}

std::optional<std::vector<std::string>> IrcAnswers::expectRooms(const std::string& pattern,
                                                                int least) {
    if (rooms_.isComing() && loop_.now() < roomsUntil_)
        return std::nullopt;
    rooms_.begin(pattern, least);
    roomsUntil_ = loop_.now() + longestAnswer;
    return rooms_.parameters(session_.features());
}

void IrcAnswers::clear() {
    awaited_.clear();
    rooms_.end();
    topicOf_.clear();
}

bool IrcAnswers::take(const IrcMessage& message) {
    if (!numeric::isNumeric(message.command) || numeric::isRefusal(message.command))
        return false;
    if (takeRooms(message) || takeTopicSetter(message))
        return true;
    if (message.command == numeric::inviting) // which is told to nobody else
        return tell_(wordsOfAnswer(message, loop_)), true;
    const auto found =
        std::ranges::find_if(awaited_, [&](const Awaited& each) { return isAbout(each, message); });
    if (found == awaited_.end())
        return false;
    tell(*found, message);
    topicOf_ = message.command == numeric::topic ? message.parameter(1) : "";
    if (kindOf(found->question).ends.find(message.command) != std::string_view::npos)
        awaited_.erase(found);
    return true;
}

bool IrcAnswers::takeRooms(const IrcMessage& message) {
    const std::string& command = message.command;
    if (!rooms_.isComing() || !(command == "321" || command == "322" || command == "323"))
        return false;
    if (command == "322")
        rooms_.add(message, session_.features());
    if (command == "323")
        for (const std::string& line : rooms_.lines())
            tell_(line);
    return true;
}

// Who has set a topic comes right after it.
bool IrcAnswers::takeTopicSetter(const IrcMessage& message) {
    const std::string of = std::exchange(topicOf_, {});
    const bool isSetter = message.command == numeric::topicSetter && !of.empty() &&
                          session_.isSame(of, message.parameter(1));
    if (isSetter)
        tell_(wordsOfAnswer(message, loop_));
    return isSetter;
}

// A server that is slow isn't done.
bool IrcAnswers::isOver(const Awaited& awaited) const {
    return loop_.now() >= awaited.until + session_.lag();
}

bool IrcAnswers::isAbout(const Awaited& awaited, const IrcMessage& message) const {
    const std::string_view numbers = kindOf(awaited.question).numbers;
    const bool isOfKind =
        numbers.empty() || numbers.find(message.command) != std::string_view::npos;
    const std::size_t place = message.command == numeric::names ? 2 : 1;
    return !isOver(awaited) && isOfKind &&
           (awaited.about.empty() || session_.isSame(awaited.about, message.parameter(place)));
}

void IrcAnswers::tell(Awaited& awaited, const IrcMessage& message) {
    const auto& kind = kindOf(awaited.question);
    const std::string words = wordsOfAnswer(message, loop_);
    if (words.empty() && awaited.told == 0 && *kind.nothing)
        return tell_(kind.nothing);
    if (words.empty() || awaited.told > most)
        return;
    tell_(++awaited.told > most ? "and more, which isn't shown" : words);
}

} // namespace larkspin
