#include "platform/player/player_process.h"

#include "platform/posix/passed_file.h"
#include "platform/posix/spawn.h"

#include <array>
#include <csignal>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

// All variables that the player gets: those that a sound server's client looks at, and those that
// steer a build under sanitizers. GStreamer's own variables, which can load any code, are not among
// them, nor is the way to the desktop.
const std::vector<std::string> playersVariables = {
    "HOME",           "USER",    "LANG",       "LC_*",   "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME",
    "XDG_CACHE_HOME", "PULSE_*", "PIPEWIRE_*", "ALSA_*", "ASAN_OPTIONS",    "LSAN_OPTIONS",
    "UBSAN_OPTIONS"};

} // namespace

std::unique_ptr<PlayerProcess> PlayerProcess::start(const std::string& program,
                                                    const std::vector<std::string>& arguments) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return nullptr;
    // Only the process itself keeps its end, so that the channel breaks when it is gone.
    Descriptor ours(ends[0]);
    const Descriptor theirs(ends[1]);
    const auto id = spawn({.program = program,
                           .arguments = arguments,
                           .environment = variables(playersVariables),
                           .channel = theirs.number()});
    if (!id)
        return nullptr;
    return std::unique_ptr<PlayerProcess>(new PlayerProcess(*id, std::move(ours)));
}

PlayerProcess::~PlayerProcess() {
    kill();
}

bool PlayerProcess::send(const PlayerWishes& wishes, const Descriptor& file) {
    const bool isNew = wishes.hasFile && wishes.song != given_;
    // The file goes with the first message about its song that gets through.
    const bool isSent =
        sendWithFile(channel_.number(), encoded(wishes), isNew ? &file : nullptr) >= 0;
    if (isSent)
        given_ = wishes.song;
    return isSent;
}

std::optional<PlayerReport> PlayerProcess::receive() {
    std::array<char, longestMessage> bytes;
    const ssize_t got = ::recv(channel_.number(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (got < 0)
        return std::nullopt; // nothing yet: the end comes as a message of no bytes
    const auto report = decodedReport({bytes.data(), static_cast<std::size_t>(got)});
    // The channel's end reads as an empty message, which is no report either.
    broken_ |= !report;
    return report;
}

void PlayerProcess::kill() {
    if (channel_.isOpen()) // else it may be another's id by now
        ::kill(id_, SIGKILL);
    channel_ = {};
}

bool PlayerProcess::isGone() {
    if (!gone_)
        gone_ = ::waitpid(id_, nullptr, WNOHANG) != 0;
    return gone_;
}

} // namespace larkspin
