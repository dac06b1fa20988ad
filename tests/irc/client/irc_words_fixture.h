// The words about rooms on a network, typed in a room without a program.
#pragma once

#include "irc/client/all_rooms.h"
#include "irc/client/password_prompt.h"
#include "platform/posix/drive_paths.h"
#include "support/pretend_irc.h"
#include "support/shown_lines.h"
#include "support/temp_directory.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>
#include <optional>

namespace larkspin {

using namespace std::chrono_literals;

class IrcWordsTest : public testing::Test, public PasswordPrompt {
protected:
    IrcWordsTest() { begin(); }

    // Begins a run; the one before it is over.
    void begin() {
        if (rooms)
            rooms->finish();
        shown.reset();
        rooms.reset();
        words = SlashWords([this](const std::string& text) {
            rooms->conversations.tell(KeptLine::Kind::answer, "! " + text);
        });
        rooms.emplace(loop, lines, lent({&server, &other}), *this, keptFiles,
                      DataDirectory(drivePath(disk.path().native())), "jo", RoomDisplay());
        shown.emplace(rooms->conversations, "");
        words.add(rooms->slashWords());
        rooms->networks.takeUpAgain();
        loop.waitUntil(loop.now() + 1s);
    }
    // What the owner is told when that is typed, and what a password is asked for.
    std::string typed(const std::string& line) {
        shown->take();
        words.run(line);
        return seenWithin(1s);
    }
    std::string toldOf(const std::string& password) {
        shown->take();
        std::exchange(answered, nullptr)(password);
        return seenWithin(1s);
    }
    std::string seenWithin(Nanoseconds span) {
        loop.waitUntil(loop.now() + span);
        return seen = shown->take();
    }
    std::string kept() const { return disk.read("irc.txt"); }
    void ask(const std::string& prompt, std::function<void(std::string)> take) override {
        rooms->conversations.tell(KeptLine::Kind::answer, '(' + prompt + ')');
        answered = std::move(take);
    }
    void dismiss() override { answered = nullptr; }

    // From now on it logs people in, and this is what they log in by.
    void offerAccounts() {
        server.capabilities += " sasl";
        server.takes = [this](const std::string& line) {
            const bool isLogin = line.starts_with("AUTHENTICATE ");
            if (isLogin)
                server.say(line.ends_with(" PLAIN") ? "AUTHENTICATE +" : ":irc 903 jo :Welcome");
            if (isLogin && !line.ends_with(" PLAIN"))
                logins += line.substr(line.find(' '));
            return isLogin;
        };
    }

    TempDirectory disk;
    VirtualLoop loop;
    ChatLines lines{loop};
    SlowDisk slowDisk{loop};
    FaultyFiles files{Wastebasket{}, slowDisk};
    Trace trace;
    KeptFiles keptFiles{files, DataDirectory(drivePath(disk.path().native())), trace};
    PretendIrc server{loop}, other{loop}; // of the first network, and of the next ones
    SlashWords words{{}};
    std::optional<AllRooms> rooms;
    std::optional<ShownLines> shown;
    std::function<void(std::string)> answered;
    std::string seen, logins;
    Lines heard; // by the program
};

} // namespace larkspin
