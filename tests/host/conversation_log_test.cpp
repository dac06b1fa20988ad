// The log of what is said, on a real disk with faults.
#include "host/conversation_log.h"
#include "host/conversations.h"
#include "platform/posix/drive_paths.h"
#include "support/temp_directory.h"
#include "support/virtual_machine.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

namespace larkspin {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class ConversationLogTest : public testing::Test {
protected:
    ConversationLogTest() { begin(); }

    void begin() { // a run
        log.reset();
        conversations.emplace(loop, lines, "lobby");
        network = conversations->newNetwork("irc.test");
        den = &conversations->add({Conversation::Kind::room, network, "#den"});
        log.emplace(loop, *conversations, files, directory,
                    [this](const std::string& text) { told += text + '\n'; });
    }
    bool typed(const std::string& rest) {
        told.clear();
        return log->word().run(rest);
    }
    Conversation& room(const std::string& name) {
        return conversations->add({Conversation::Kind::room, network, name});
    }
    void say(Conversation& in, const std::string& text, std::time_t at = 0) {
        conversations->keep(
            in, {.kind = KeptLine::Kind::said, .speaker = "ann", .text = text, .at = at});
    }
    void wait(Nanoseconds span = 2s) { loop.waitUntil(loop.now() + span); }
    std::string logged() { return disk.read("logs/irc.test/#den.2003-12.txt"); }

    TempDirectory disk;
    VirtualLoop loop;
    ChatLines lines{loop};
    SlowDisk slowDisk{loop};
    FaultyFiles faulty{Wastebasket{}, slowDisk};
    Trace trace;
    const DataDirectory directory{drivePath(disk.path().native())};
    KeptFiles files{faulty, directory, trace};
    std::optional<Conversations> conversations;
    std::optional<ConversationLog> log;
    int network = 0;
    Conversation* den = nullptr;
    std::string told;
};

TEST_F(ConversationLogTest, IsTurnedOnAndOffByAWordAndStaysSo) {
    const std::string place = directory.path() + "\\logs";
    say(*den, "unheard");
    wait();
    EXPECT_FALSE(fs::exists(disk.path() / "logs"));
    for (const char* senseless : {"x", "on x", "on off"})
        EXPECT_FALSE(typed(senseless)) << senseless;
    for (const auto& [words, isOn] : std::vector<std::pair<std::string, bool>>{
             {"", false}, {" On", true}, {"", true}, {"off", false}, {" ", false}}) {
        EXPECT_TRUE(typed(words));
        EXPECT_EQ(told,
                  isOn ? "what is said is written down in " + place + "\n"
                       : "what is said isn't written down; /log on does so, in " + place + "\n")
            << words;
    }
    typed("on");
    begin();
    say(*den, "one");
    typed("off");
    EXPECT_EQ(logged(), "2003-12-19 19:05  ann: one\n") << "at once";
    begin();
    say(*den, "two");
    wait();
    EXPECT_EQ(logged(), "2003-12-19 19:05  ann: one\n");
}

TEST_F(ConversationLogTest, HoldsALineForEachInPlainTextForTheOwnerAlone) {
    using Kind = KeptLine::Kind;
    typed("on");
    for (const KeptLine& line : std::vector<KeptLine>{
             {.kind = Kind::said, .speaker = "ann", .text = "<b>hi</b> <\u200Cb>\n you"},
             {.kind = Kind::done, .speaker = "ann", .text = "<i>waves"},
             {.kind = Kind::noted, .speaker = "bob", .text = "x"},
             {.kind = Kind::answer, .text = "what you asked for"},
             {.text = "bob comes in"},
             {.kind = Kind::said, .speaker = "Owner", .text = "'next", .isOwners = true}})
        conversations->keep(*den, line);
    conversations->tell(Kind::news, "at home");
    say(conversations->add({Conversation::Kind::person, network, "Ann"}), "psst");
    constexpr std::time_t month = 31 * 24 * 3600;
    say(*den, "of old", loop.moment() - month);
    wait(1999ms);
    EXPECT_FALSE(fs::exists(disk.path() / "logs")) << "not yet";
    wait(1ms);
    EXPECT_EQ(logged(), "2003-12-19 19:05  ann: hi <b>  you\n"
                        "2003-12-19 19:05  * ann waves\n"
                        "2003-12-19 19:05  bob notes: x\n"
                        "2003-12-19 19:05  bob comes in\n"
                        "2003-12-19 19:05  Owner: 'next\n");
    EXPECT_EQ(disk.read("logs/@home/lobby.2003-12.txt"), "2003-12-19 19:05  at home\n");
    EXPECT_EQ(disk.read("logs/irc.test/ann.2003-12.txt"), "2003-12-19 19:05  ann: psst\n");
    EXPECT_EQ(disk.read("logs/irc.test/#den.2003-11.txt"), "2003-11-18 19:05  ann: of old\n");
    EXPECT_EQ(fs::status(disk.path() / "logs/irc.test").permissions(), fs::perms{0700});
    EXPECT_EQ(fs::status(disk.path() / "logs/irc.test/ann.2003-12.txt").permissions(),
              fs::perms{0600});
}

TEST_F(ConversationLogTest, NamesLeadNowhereElseAndAreOneWithoutRegardToCase) {
    typed("on");
    told.clear();
    const std::vector<std::pair<std::string, std::string>> files{
        {"#Den", "#den"},
        {"..", "%2e."},
        {".", "%2e"},
        {"/", "%2f"},
        {"#a/../b", "#a%2f..%2fb"},
        {"#a%2fb", "#a%252fb"},
        {"c:\\x", "c%3a%5cx"},
        {"", "%"},
        {"-a b", "-a%20b"},
        {"\xE9\x01", "%e9%01"},
        {"\u00C4\u202E", "\u00E4%e2%80%ae"},
        {"\uF03A", "%3a"},
        {"#{[^]}", "#{[^]}"},
        {"@home", "%40home"}};
    for (const auto& [name, file] : files)
        say(room(name), name);
    const std::string begun(119, 'x'); // of names that are too long for a file, but for the first
    for (const char* end : {"x", "xx", "xy", "\u00E4"})
        say(room(begun + end), "x");
    wait();
    for (const auto& [name, file] : files)
        EXPECT_NE(disk.read("logs/irc.test/" + file + ".2003-12.txt"), "") << name;
    std::vector<std::string> longest;
    for (const auto& entry : fs::directory_iterator(disk.path() / "logs/irc.test"))
        if (std::string name = entry.path().filename(); name.starts_with("xxx"))
            longest.push_back(std::to_string(name.size()) + name[119]);
    std::ranges::sort(longest);
    EXPECT_EQ(longest, (std::vector<std::string>{"132x", "149%", "150x", "150x"}));
    EXPECT_EQ(told, "");
    EXPECT_EQ(std::distance(fs::directory_iterator(disk.path() / "logs"), {}), 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(disk.path()), {}), 2) << "and the settings";
}

TEST_F(ConversationLogTest, WhatCantBeWrittenIsToldOnceAndWrittenLater) {
    typed("on");
    told.clear();
    faulty.full = true;
    for (const char* text : {"one", "two"}) {
        say(*den, text);
        wait(1h);
    }
    EXPECT_EQ(told, "the log couldn't be written: no space left on the device\n");
    say(*den, std::string(ConversationLog::mostWaiting, 'x'));
    faulty.full = false;
    say(*den, "three");
    wait();
    EXPECT_EQ(logged(), "2003-12-19 19:05  ann: one\n2003-12-19 20:05  ann: two\n"
                        "2003-12-19 21:05  ann: three\n");
    EXPECT_TRUE(told.ends_with("\n1 line of the log couldn't be written\n")) << told;
    faulty.full = true;
    say(*den, "four");
    wait();
    EXPECT_TRUE(told.ends_with("\nthe log couldn't be written: no space left on the device\n"))
        << "again, since it was over";
    fs::remove_all(disk.path() / "logs");
    faulty.full = false;
    say(*den, "five");
    wait();
    EXPECT_EQ(logged(), "2003-12-19 21:05  ann: four\n2003-12-19 21:05  ann: five\n");
}

TEST_F(ConversationLogTest, ASlowDiskHoldsNobodyUpAndNothingGetsLostMeanwhile) {
    typed("on");
    slowDisk.spans[directory.logsDirectory() + "\\irc.test"] = 5s;
    say(*den, "one");
    wait(3s);
    say(*den, "two"); // while the first one is being written
    log->write();
    wait(1min);
    EXPECT_EQ(logged(), "2003-12-19 19:05  ann: one\n2003-12-19 19:05  ann: two\n");
    slowDisk.spans[directory.logsDirectory() + "\\irc.test"] = SlowDisk::bound;
    told.clear();
    say(*den, "three");
    wait(1min);
    EXPECT_EQ(told, "the log couldn't be written: the disk doesn't answer\n");
}

} // namespace
} // namespace larkspin
