// A recital of 150 lines of mixed lengths in a room of a pretended server, with the owner's
// commands in its middle, on the virtual clock.
#pragma once

#include "support/irc_machine.h"

#include <algorithm>
#include <string>

namespace larkspin {

struct IrcRecital {
    std::size_t lines = 0; // that the server has read
    int connections = 0;
    std::chrono::duration<double> whole{}, latestCommand{}, latestAnswer{};
};

// A command comes after each such span, up to a bound; the answer counts when the server has read
// it.
inline IrcRecital reciteOn(const IrcPenalties& family, std::chrono::milliseconds betweenCommands) {
    using namespace std::chrono_literals;
    constexpr int lines = 150;
    constexpr auto patience = 1500s;
    int commandsLeft = 40;
    Lines songs;
    for (int song = 0; song < lines; ++song)
        songs.push_back("ride " + std::to_string(song + 1000) +
                        std::string(static_cast<std::size_t>(song * 37 % 200), 'x') + ".mp3");
    IrcMachine machine;
    machine.server.family = &family;
    machine.server.capabilities = family.capabilities;
    machine.begin(songs);
    machine.advance(60s);
    machine.typed("'play ride", 20s);
    machine.server.sent.clear();

    IrcRecital recital;
    const Nanoseconds begun = machine.loop.now();
    Nanoseconds typed{}; // the last command; 0 when it is answered
    int volume = 10;
    bool isObeyed = true, isOver = false;
    const auto isSaid = [&](const std::string& text) {
        return std::ranges::any_of(machine.server.sent, [&](const std::string& line) {
            return line.find(text) != line.npos;
        });
    };
    const auto look = [&] {
        if (typed == Nanoseconds(0))
            return;
        const std::chrono::duration<double> since = machine.loop.now() - typed;
        if (!isObeyed && (isObeyed = machine.state().HScroll2 == volume))
            recital.latestCommand = std::max(recital.latestCommand, since);
        if (isObeyed && isSaid("volume set:  \x02" + std::to_string(volume))) {
            recital.latestAnswer = std::max(recital.latestAnswer, since);
            typed = {};
        }
    };
    const TimerId looking = machine.loop.every(20ms, look);
    const TimerId typing = machine.loop.every(betweenCommands, [&] {
        if (typed > Nanoseconds(0) || isOver || commandsLeft == 0)
            return;
        --commandsLeft;
        typed = machine.loop.now();
        isObeyed = false;
        machine.room.say("'volume " + std::to_string(volume = volume % 90 + 1));
        look();
    });
    machine.loop.post([&] { machine.room.say("'yes"); });
    while (machine.loop.now() < begun + patience && !isSaid("type \x02'm 1"))
        machine.advance(1s);
    recital.whole = machine.loop.now() - begun;
    isOver = true;
    machine.advance(10s);
    machine.loop.cancel(looking);
    machine.loop.cancel(typing);
    for (int song = 0; song < lines; ++song)
        recital.lines += isSaid(std::to_string(song + 1000)) ? 1 : 0;
    recital.connections = machine.server.opened;
    return recital;
}

} // namespace larkspin
