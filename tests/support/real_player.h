// For tests of the real player: a media control on a virtual clock, whose process plays in real
// time into a sink without a device.
#pragma once

#include "platform/player/player_control.h"
#include "platform/posix/disk_questions.h"
#include "support/made_songs.h"
#include "support/temp_directory.h"
#include "support/virtual_loop.h"

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace larkspin {

constexpr const char* clockedSink = "fakesink sync=true";
constexpr const char* fastSink = "fakesink sync=false";

// The processes that this one has started, those among them that nobody has waited for yet.
std::vector<pid_t> childProcesses();
char stateOf(pid_t process); // as ps(1) shows it; 0 when there is none

class RealPlayer : public testing::Test {
protected:
    // GStreamer's list of its plug-ins is kept beside the tests, not in the home directory. No
    // sound server is asked.
    static void SetUpTestSuite();

    using Clock = std::chrono::steady_clock;
    // For seconds of the virtual clock, which goes on in small steps that a busy machine holds up.
    static constexpr Clock::duration patience = std::chrono::seconds(40);

    std::string drive(const std::string& name) const; // of a file on the disk
    std::string song(const std::string& name, double seconds) const;

    // Into a sink, which may write to the disk.
    PlayerControl::Player playing(const std::string& sink = fastSink) {
        return {.program = LARKSPIN_PLAYER,
                .arguments = {sink, disk.path().native()},
                .disk = asked,
                .lost = [this](const std::string& why) { lost += why + '\n'; }};
    }

    // Polls in real time, as the program's ticks do in theirs. The virtual clock stands, so
    // that a song which failed would read waiting for ever.
    template <typename Condition>
    bool comesTrue(Condition condition, Clock::duration limit = patience) {
        const auto end = Clock::now() + limit;
        while (Clock::now() < end) {
            loop.serveTurn();
            if (condition())
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return false;
    }
    // The same while the virtual clock goes on.
    template <typename Condition> bool comesInTime(Condition condition, Nanoseconds step) {
        return comesTrue([&] {
            pass(step);
            return condition();
        });
    }
    bool reaches(PlayerControl& player, PlayState state) {
        return comesTrue([&] { return player.PlayState() == state; });
    }
    bool staysFor(PlayerControl& player, PlayState state, Clock::duration span) {
        return !comesTrue([&] { return player.PlayState() != state; }, span);
    }
    void pass(Nanoseconds span) { loop.waitUntil(loop.now() + span); }

    // The process that has come since `before`; 0 when there is none.
    static pid_t newChild(const std::vector<pid_t>& before);
    static bool hasEnded(pid_t process); // whether or not somebody has waited for it

    std::string script(const std::string& text) const; // a program in place of the player

    // Opens it and waits for its end, however that comes.
    bool isPlayedToItsEnd(PlayerControl& player, const std::string& path);

    OwnersDisk asked{answersFrom(PosixFiles(), PosixDirectories())};
    std::vector<pid_t> before = childProcesses();
    VirtualLoop loop;
    TempDirectory disk;
    std::string told, lost;
    const PlayerControl::Tell tell = [this](const std::string& line) { told += line + '\n'; };
};

} // namespace larkspin
