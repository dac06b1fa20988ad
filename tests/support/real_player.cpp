#include "support/real_player.h"

#include "platform/posix/drive_paths.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace larkspin {

namespace fs = std::filesystem;

namespace {

struct ProcessStat {
    char state = 0;
    pid_t parent = 0;
};

ProcessStat statOf(const fs::path& process) {
    std::string line;
    std::getline(std::ifstream(process / "stat"), line);
    const auto end = line.rfind(") ");
    if (end == std::string::npos)
        return {};
    return {line[end + 2], static_cast<pid_t>(std::atoi(line.c_str() + end + 4))};
}

} // namespace

std::vector<pid_t> childProcesses() {
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const pid_t id = std::atoi(entry.path().filename().c_str());
        if (id > 0 && statOf(entry.path()).parent == ::getpid())
            found.push_back(id);
    }
    return found;
}

char stateOf(pid_t process) {
    return statOf("/proc/" + std::to_string(process)).state;
}

void RealPlayer::SetUpTestSuite() {
    const fs::path cache = fs::read_symlink("/proc/self/exe").parent_path() / "cache";
    for (const char* directory : {"XDG_CACHE_HOME", "HOME"})
        ::setenv(directory, cache.c_str(), 1);
    ::unsetenv("XDG_CONFIG_HOME");
    for (const char* server : {"PULSE_SERVER", "PIPEWIRE_REMOTE"})
        ::setenv(server, "none", 1);
}

std::string RealPlayer::drive(const std::string& name) const {
    return drivePath((disk.path() / name).native());
}

std::string RealPlayer::song(const std::string& name, double seconds) const {
    EXPECT_TRUE(makeSong(disk.path() / name, seconds));
    return drive(name);
}

pid_t RealPlayer::newChild(const std::vector<pid_t>& before) {
    for (const pid_t child : childProcesses())
        if (std::ranges::find(before, child) == before.end())
            return child;
    return 0;
}

bool RealPlayer::hasEnded(pid_t process) {
    const char state = process > 0 ? stateOf(process) : 0;
    return state == 0 || state == 'Z';
}

std::string RealPlayer::script(const std::string& text) const {
    disk.write("player", "#!/bin/sh\n" + text + '\n');
    fs::permissions(disk.path() / "player", fs::perms::owner_all);
    return (disk.path() / "player").native();
}

bool RealPlayer::isPlayedToItsEnd(PlayerControl& player, const std::string& path) {
    player.Open(path);
    if (!reaches(player, PlayState::stopped))
        return false;
    return !player.wasGivenUp();
}

} // namespace larkspin
