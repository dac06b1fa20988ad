// A running program whose owner sits in a room on a pretended IRC server.
#pragma once

#include "irc/client/current_room.h"
#include "irc/client/password_prompt.h"
#include "support/no_prompt.h"
#include "support/pretend_irc.h"
#include "support/shown_lines.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>
#include <string>

namespace larkspin {

class IrcMachine : public VirtualMachine {
public:
    IrcMachine() { host = &room; }

    // In #music, unless the server has something against it.
    void begin(const Lines& songs = {"ride.mp3"}) {
        playlist(songs);
        start();
        seenOf([&] { irc.connect({.host = "irc.test"}, {.nick = "Owner"}, "#music"); });
        server.sent.clear();
    }

    // What the owner sees of it: lines, and messages after "- ".
    std::string seenOf(const std::function<void()>& action,
                       std::chrono::duration<double> span = 1ms) {
        shown.take();
        run(action);
        advance(span);
        return seen = shown.take();
    }
    std::string typed(const std::string& line, std::chrono::duration<double> span = 1ms) {
        return seenOf([&] { loop.post([&, line] { room.say(line); }); }, span);
    }
    std::string told(const std::string& text) { // by the server
        return seenOf([&] { server.say(text); });
    }
    std::string joined(const std::string& channel, const std::string& key = {}) {
        return seenOf([&] { irc.join(channel, key); });
    }
    void type(int count) { // at once
        for (int line = 0; line < count; ++line)
            room.say("typed " + std::to_string(line));
    }
    Nanoseconds spanOfSaying(int count) {
        const Nanoseconds begun = loop.now();
        for (int line = 0; line < count; ++line)
            irc.sendChatLine("line " + std::to_string(line));
        return loop.now() - begun;
    }
    void addNotes(int count) {
        for (int note = 0; note < count; ++note)
            state().notes.add("note " + std::to_string(note));
    }

    // What the client has sent meanwhile, a line each.
    std::string sentOf(const std::function<void()>& action,
                       std::chrono::duration<double> span = 1ms) {
        server.sent.clear();
        seenOf(action, span);
        std::string all;
        for (const std::string& line : server.sent)
            all += line + '\n';
        return all;
    }

    NoPrompt noPrompt;
    PretendIrc server{loop};
    Conversations conversations{loop, lines, "lobby"};
    RoomDisplay display{
        .message =
            [this](const std::string& text) { conversations.tell(KeptLine::Kind::news, text); },
        .tell =
            [this](const std::string& text) {
                conversations.tell(KeptLine::Kind::answer, text);
                ++answers;
            },
        .changed = [this] { ++changes; }};
    OwnRoom own{conversations, lines, "Login", display};
    IrcAccounts accounts{kept, DataDirectory(drive("data")).ircFile()};
    IrcNetworks networks{{loop, lines, conversations, noPrompt, kept, display},
                         lent({&server}),
                         accounts,
                         [](IrcClient&) { return SlashWords({}); }};
    IrcClient& irc = networks.all().front()->client;
    WindowRoom windows{loop, lines, conversations, display};
    CurrentRoom room{conversations, own, networks, windows};
    ShownLines shown{conversations, "- "};
    std::string seen;
    int answers = 0; // of all messages, those that the owner has asked for
    int changes = 0;
};

// Tests of such a program: one begins by itself, or is in #music from the beginning.
class IrcTest : public testing::Test, protected IrcMachine {};
class InMusic : public IrcTest {
protected:
    InMusic() { begin(); }
};

} // namespace larkspin
