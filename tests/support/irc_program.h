// The whole program in a terminal, on a real server, with other people in the room.
#pragma once

#include "support/child.h"
#include "support/irc_person.h"
#include "support/own_network.h"
#include "support/patience.h"
#include "support/temp_directory.h"

#include <gtest/gtest.h>

namespace larkspin {

inline void PrintTo(IrcFamily family, std::ostream* out) { // in the names of tests
    *out << nameOf(family);
}

struct IrcProgramTest : testing::Test {
    void SetUp() override {
        if (!isAlone())
            GTEST_SKIP() << "needs a network of its own, which the system doesn't allow";
        disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\ntrigger='\r\n");
    }
    std::vector<std::string> variables() const {
        std::vector<std::string> all = ownHome(disk.path().native());
        all.insert(all.end(), {"TERM=xterm", "all_proxy=socks5://127.0.0.1:9"}); // isn't gone by
        return all;
    }
    std::unique_ptr<Child> startIn(const std::string& connect,
                                   const std::vector<std::string>& more = {}) const {
        auto all = variables();
        all.insert(all.end(), more.begin(), more.end());
        auto program = Child::start(LARKSPIN_TTY, all);
        EXPECT_TRUE(program->says("load:  <b>", patience));
        program->tell(connect);
        EXPECT_TRUE(program->says("[room] you are in #den", patience));
        return program;
    }
    static IrcPerson inDen(const std::string& nick) {
        IrcPerson person(nick);
        person.send("JOIN #den");
        EXPECT_NE(person.hears(" 366 "), "");
        return person;
    }
    // What is said there next, as it stands on the wire after the channel.
    static std::string said(IrcPerson& listener) {
        const std::string line = listener.hears("PRIVMSG #den :", patience);
        return line.substr(std::min(line.find(" :"), line.size() - 2) + 2);
    }
    void expectVolume(Child& program, const std::string& volume) const { // as it ends
        program.tell("/quit");
        EXPECT_EQ(program.ends(patience), 0);
        const std::string all = disk.read("larkspin/larkspin.ini");
        EXPECT_NE(all.find("\nvolume=" + volume + "\r"), std::string::npos) << all;
    }
    std::string file(const std::string& name) const { return disk.read("larkspin/" + name); }

    TempDirectory disk;
};

} // namespace larkspin
