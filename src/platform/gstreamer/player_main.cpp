// The player process: plays what comes in on the socket that it was started with, and ends
// with it. Usage: larkspin-player [SINK [DIRECTORY]], where SINK describes where the sound goes
// and may write to files in DIRECTORY.
#include "platform/gstreamer/confinement.h"
#include "platform/gstreamer/elements.h"
#include "platform/gstreamer/song_player.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <malloc.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace larkspin;

namespace {

constexpr int channel = 3;           // as spawned
constexpr int reportInterval = 1000; // milliseconds, while a song plays

// Only the latest of all that have come in. Ends the process with the program's end.
std::optional<PlayerWishes> receiveWishes() {
    std::optional<PlayerWishes> latest;
    std::array<char, longestMessage> bytes;
    for (;;) {
        const ssize_t got = ::recv(channel, bytes.data(), bytes.size(), MSG_DONTWAIT);
        if (got < 0 && errno == EAGAIN)
            return latest;
        if (got == 0 || (got < 0 && errno != EINTR))
            ::_exit(EXIT_SUCCESS); // whatever its threads are at
        if (auto wishes = got > 0 ? decodedWishes({bytes.data(), static_cast<std::size_t>(got)})
                                  : std::nullopt)
            latest = std::move(wishes);
    }
}

class Reports {
public:
    explicit Reports(SongPlayer& player) : player_(player) {}

    // If there is something new, or nothing was said for a second while a song plays.
    void say() {
        const PlayerReport report = player_.report();
        const bool due = report.at - said_.at >= std::chrono::milliseconds(reportInterval);
        if (!(player_.isPlaying() && due) && !isNews(report))
            return;
        send(report);
    }
    // Before anything is done with it: should it end this process, it is known which one it was.
    void sayTaken(std::uint32_t song) {
        send({.song = song, .at = std::chrono::steady_clock::now()});
    }
    bool areUnsaid() const { return unsaid_; }

private:
    void send(const PlayerReport& report) {
        const std::string bytes = encoded(report);
        unsaid_ = ::send(channel, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL) < 0;
        if (!unsaid_)
            said_ = report;
    }

    // The position alone is none while it runs by itself.
    bool isNews(PlayerReport report) const {
        report.at = said_.at;
        if (report.advancing)
            report.position = said_.position;
        return report != said_;
    }

    SongPlayer& player_;
    PlayerReport said_;
    bool unsaid_ = false;
};

} // namespace

int main(int count, char** arguments) {
    bindToParent();
    ::fcntl(channel, F_SETFD, FD_CLOEXEC);
    // Each song is played by other threads. With a heap for each of them, much would stay in
    // memory many times over.
    ::mallopt(M_ARENA_MAX, 1);
    startGStreamer();
    confine(count > 2 ? arguments[2] : "");

    SongPlayer player(count > 1 ? arguments[1] : "");
    Reports reports(player);
    for (;;) {
        pollfd events[] = {
            {channel, static_cast<short>(reports.areUnsaid() ? POLLIN | POLLOUT : POLLIN), 0},
            {player.messages(), POLLIN, 0}};
        ::poll(events, 2, player.isPlaying() || player.isOpening() ? reportInterval : -1);
        if (const auto wishes = receiveWishes()) {
            if (wishes->song != player.song()) {
                player.drop();
                reports.sayTaken(wishes->song);
            }
            player.wish(*wishes);
        }
        player.handleMessages();
        player.watchOpening();
        reports.say();
    }
}
