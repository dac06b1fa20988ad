#include "irc/talk/irc_answer_words.h"

#include "host/typed_secrets.h"
#include "irc/protocol/irc_message.h"
#include "irc/talk/irc_news.h"
#include "shell/event_loop.h"
#include "text/number.h"
#include "text/visible.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>
#include <optional>

namespace larkspin {

namespace {

// A message with its parameters as they are shown.
class Told {
public:
    Told(const IrcMessage& message, const EventLoop& loop) : message_(message), loop_(loop) {}

    std::string operator[](std::size_t parameter) const {
        return plainText(message_.parameter(parameter));
    }
    std::size_t count() const { return message_.parameters.size(); }
    std::string last() const { return count() > 1 ? (*this)[count() - 1] : ""; }

    // With a blank between them; the last one, which is a sentence, aside.
    std::string from(std::size_t first) const {
        std::string all;
        for (std::size_t number = first; number + 1 < count(); ++number)
            all += (all.empty() ? "" : " ") + (*this)[number];
        return all;
    }
    std::optional<std::int64_t> number(std::size_t parameter) const {
        const std::string_view digits = message_.parameter(parameter);
        std::int64_t value = 0;
        const auto [end, error] =
            std::from_chars(digits.data(), digits.data() + digits.size(), value);
        constexpr std::int64_t latest = 253'402'300'799; // of four digits' years
        const bool isWhole = error == std::errc() && end == digits.data() + digits.size();
        return isWhole && value > 0 && value <= latest ? std::optional(value) : std::nullopt;
    }
    // A moment in seconds since 1970, after these words; blank if there is none.
    std::string moment(const char* words, std::size_t parameter) const {
        const auto moment = number(parameter);
        if (!moment)
            return {};
        const std::tm date = loop_.dateOf(static_cast<std::time_t>(*moment));
        char text[32] = "";
        std::strftime(text, sizeof text, "%Y-%m-%d %H:%M", &date);
        return std::string(words) + text;
    }
    std::string nick(std::size_t parameter) const { // of "nick!user@host"
        const std::string who = (*this)[parameter];
        return who.substr(0, who.find('!'));
    }
    std::string by(std::size_t parameter) const {
        const std::string who = nick(parameter);
        return who.empty() ? "" : ", set by " + who;
    }

private:
    const IrcMessage& message_;
    const EventLoop& loop_;
};

std::string spanOf(std::int64_t seconds) {
    if (seconds < 60)
        return counted(seconds, "second");
    if (seconds < 3600)
        return counted(seconds / 60, "minute");
    return seconds < 48 * 3600 ? counted(seconds / 3600, "hour") : counted(seconds / 86400, "day");
}

std::string idle(const Told& told) {
    const auto seconds = told.number(2);
    return told[1] + " has said nothing for " + spanOf(seconds.value_or(0)) +
           told.moment(", and is here since ", 3);
}

// A room's key is among the modes.
std::string modes(const Told& told) {
    constexpr std::string_view command = "MODE ";
    std::string all;
    for (std::size_t number = 2; number < told.count(); ++number)
        all += (all.empty() ? "" : " ") + told[number];
    if (all.empty() || all == "+")
        return told[1] + " has no modes";
    return "the modes of " + told[1] + " are " +
           protocolWithoutSecrets(std::string(command) + all).substr(command.size());
}

std::string listed(const Told& told, const char* what, std::size_t mask = 2) {
    return told[mask] + what + told.by(mask + 1) + told.moment(", ", mask + 2);
}

std::string found(const Told& told) {
    return told[5] + " (" + told[2] + '@' + told[3] + ") on " + told[4] + ": " +
           told.last().substr(std::min(told.last().find(' ') + 1, told.last().size()));
}

// The name, then the sentence, then what stands between the two.
std::string sentence(const Told& told) {
    const std::string middle = told.from(2);
    return told[1] + (told.count() > 2 ? ' ' + told.last() : "") +
           (middle.empty() ? "" : ' ' + middle);
}

using Words = std::string (*)(const Told& told);

constexpr struct {
    std::string_view number;
    Words words;
} answers[] = {
    {"005", [](const Told& told) { return told.from(1) + ' ' + told.last(); }},
    {"221", [](const Told& told) { return "your modes are " + told[1]; }},
    {"301", [](const Told& told) { return told[1] + " is away: " + told[2]; }},
    {"305", [](const Told&) { return std::string("you are no longer away"); }},
    {"306", [](const Told&) { return std::string("you are away"); }},
    {"311",
     [](const Told& told) {
         return told[1] + " is " + told[2] + '@' + told[3] + ": " + told.last();
     }},
    {"312", [](const Told& told) { return told[1] + " is on " + told[2] + " (" + told[3] + ')'; }},
    {"314",
     [](const Told& told) {
         return told[1] + " was " + told[2] + '@' + told[3] + ": " + told.last();
     }},
    {"317", idle},
    {"319", [](const Told& told) { return told[1] + " is in " + told[2]; }},
    {"324", modes},
    {"329", [](const Told& told) { return told[1] + " was made" + told.moment(" ", 2); }},
    {"330", [](const Told& told) { return told[1] + " is logged in as " + told[2]; }},
    {"333",
     [](const Told& told) {
         return "the topic of " + told[1] + " was set by " + told.nick(2) + told.moment(", ", 3);
     }},
    {"341", [](const Told& told) { return told[1] + " is invited to " + told[2]; }},
    {"346", [](const Told& told) { return listed(told, " needs no invitation"); }},
    {"348", [](const Told& told) { return listed(told, " is never kept out"); }},
    {"352", found},
    {"353", [](const Told& told) { return told[2] + ": " + told.last(); }},
    {"367", [](const Told& told) { return listed(told, " is kept out"); }},
    {"728", [](const Told& told) { return listed(told, " can't speak", 3); }},
};

constexpr std::string_view framesOfAnswers[] = {"315", "318", "321", "323", "347", "349", "365",
                                                "366", "368", "369", "374", "376", "729"};

} // namespace

std::string wordsOfAnswer(const IrcMessage& message, const EventLoop& loop) {
    if (std::ranges::find(framesOfAnswers, message.command) != std::end(framesOfAnswers))
        return {};
    const auto known = std::ranges::find_if(
        answers, [&](const auto& answer) { return answer.number == message.command; });
    const Told told(message, loop);
    return known == std::end(answers) ? sentence(told) : known->words(told);
}

} // namespace larkspin
