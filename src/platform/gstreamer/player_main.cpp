// The player process: plays what comes in on the socket that it was started with, and ends
// with it. Usage: larkspin-player [SINK [DIRECTORY]], where SINK describes where the sound goes
// and may write to files in DIRECTORY.
#include "platform/gstreamer/confinement.h"
#include "platform/gstreamer/elements.h"
#include "platform/gstreamer/song_player.h"
#include "platform/posix/passed_file.h"

#include <algorithm>
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

struct Received {
    std::optional<PlayerWishes> wishes;
    SongFile file; // of their song, if that is a new one
};

// The latest of all the wishes that have come in. Ends the process when the program has ended.
Received receiveWishes() {
    Received latest;
    std::array<char, longestMessage> bytes;
    for (;;) {
        Descriptor file;
        const ssize_t got = receiveWithFile(channel, bytes, file);
        if (got < 0 && errno == EAGAIN)
            return latest;
        // The channel's end reads as an empty message, which is no wish either.
        const auto wishes =
            decodedWishes({bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0))});
        if (!wishes)
            ::_exit(EXIT_SUCCESS); // without waiting for its threads
        if (!latest.wishes || latest.wishes->song != wishes->song)
            latest.file = SongFile(std::move(file));
        latest.wishes = wishes;
    }
}

class Reports {
public:
    // A step of the start is done. Whoever waits for the process sees that it gets on.
    void sayStep() { send({.start = ++start_, .at = std::chrono::steady_clock::now()}); }

    void begin(SongPlayer& player, bool isConfined) {
        player_ = &player;
        isConfined_ = isConfined;
        start_ = startSteps;
    }

    // Sends a report if there is something new, or if a song plays and nothing was said for a
    // second.
    void say() {
        const PlayerReport report = complete(player_->report());
        const bool due = report.at - said_.at >= std::chrono::milliseconds(reportInterval);
        if (!(player_->isPlaying() && due) && !isNews(report))
            return;
        send(report);
    }
    // Says that the song has come, before anything is done with it. If it ends this process, the
    // program knows which song it was.
    void sayTaken(std::uint32_t song) {
        send(complete({.song = song,
                       .withoutDevice = player_->isSilent(),
                       .at = std::chrono::steady_clock::now()}));
    }
    bool areUnsaid() const { return unsaid_; }

private:
    void send(const PlayerReport& report) {
        const std::string bytes = encoded(report);
        unsaid_ = ::send(channel, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL) < 0;
        if (!unsaid_)
            said_ = report;
    }

    PlayerReport complete(PlayerReport report) const {
        report.start = start_;
        report.confined = isConfined_;
        return report;
    }

    // A position that only runs on is no news.
    bool isNews(PlayerReport report) const {
        report.at = said_.at;
        if (report.advancing)
            report.position = said_.position;
        return report != said_;
    }

    SongPlayer* player_ = nullptr;
    PlayerReport said_;
    std::uint8_t start_ = 0;
    bool isConfined_ = false;
    bool unsaid_ = false;
};

} // namespace

int main(int count, char** arguments) {
    bindToParent();
    ::fcntl(channel, F_SETFD, FD_CLOEXEC);
    // Each song is played by other threads. With a heap for each of them, much would stay in
    // memory many times over.
    ::mallopt(M_ARENA_MAX, 1);
    Reports reports;
    reports.sayStep();
    startGStreamer();
    reports.sayStep();

    // The order matters. Files are closed while there is one thread, since other threads wouldn't
    // be bound by that. The player then opens the way to the sound server, which needs a socket; no
    // new one can be had after the next two steps.
    const bool filesAreClosed = closeFiles(count > 2 ? arguments[2] : "");
    SongPlayer player(count > 1 ? arguments[1] : "");
    closeNetwork();
    const bool callsAreClosed = closeCalls();
    limitMemory();
    reports.begin(player, filesAreClosed && callsAreClosed);
    for (;;) {
        pollfd events[] = {
            {channel, static_cast<short>(reports.areUnsaid() ? POLLIN | POLLOUT : POLLIN), 0},
            {player.messages(), POLLIN, 0}};
        ::poll(events, 2, player.isPlaying() ? reportInterval : -1);
        if (Received received = receiveWishes(); received.wishes) {
            if (received.wishes->song != player.song()) {
                if (!player.drop())
                    ::_exit(EXIT_FAILURE); // the next song gets another process
                reports.sayTaken(received.wishes->song);
            }
            player.wish(*received.wishes, std::move(received.file));
        }
        player.handleMessages();
        reports.say();
    }
}
