#include "app/main_linux.h"

#include "platform/posix/crash_report.h"
#include "platform/posix/disk_questions.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/file_addresses.h"
#include "platform/posix/own_files.h"
#include "platform/posix/standard_streams.h"
#include "platform/posix/user_directories.h"

namespace larkspin {

namespace {

PosixFiles filesBehindStreams() {
    openStandardStreams();
    return PosixFiles(Wastebasket{userDataHome()});
}

Machine machineOf(LinuxPorts& ports, const FrontEnd& frontEnd, MediaControl& player,
                  MachineFacts& facts) {
    return {.loop = ports.loop,
            .files = ports.files,
            .directories = ports.directories,
            .dialogs = frontEnd.dialogs,
            .desktop = frontEnd.desktop,
            .host = frontEnd.host,
            .lines = ports.lines,
            .player = player,
            .launching = ports.launching,
            .otherPlayer = ports.otherPlayer,
            .facts = facts,
            .power = ports.power,
            .process = ports.process,
            .trace = ports.trace,
            .dataDirectory = ports.directory.path(),
            .fadesWindows = frontEnd.fadesWindows,
            .note = frontEnd.note};
}

// With the list of songs, which is what a desktop means by the player.
Task raised(const Task& frontEnd, MediaList& list) {
    if (!frontEnd)
        return {};
    return [frontEnd, &list] {
        list.show();
        frontEnd();
    };
}

} // namespace

LinuxDisk::LinuxDisk()
    : files(filesBehindStreams()), owners(answersFrom(files, PosixDirectories())),
      process(DataDirectory(userDataDirectory()).path()) {}

LinuxPorts::LinuxPorts(LinuxDisk& ownersDisk, WatchingLoop& frontEndsLoop)
    : disk(ownersDisk), loop(frontEndsLoop), lines(loop), directory(userDataDirectory()),
      asked(disk.owners, disk.files, directory.path()), files(asked, directory, trace),
      directories(disk.owners, PosixDirectories(), directory.path()), windows(loop, ownBridge()),
      playerOnBus(sessionBusAddress()), power(systemBusAddress()), process(disk.process) {
    reportCrashes(trace, nativePath(directory.crashFile()));
    disk.owners.serve(loop);
}

std::unique_ptr<IrcConnection> LinuxPorts::connection() {
    return std::make_unique<TracedConnection>(std::make_unique<IrcLink>(loop), trace);
}

Preferences::Folders LinuxPorts::folders() {
    return {.music = userMusicDirectory(),
            .find = [this](std::string_view typed) { return folderOf(directories, typed); },
            .asTyped = &typedPath};
}

LinuxProgram::LinuxProgram(LinuxPorts& ports, const FrontEnd& frontEnd)
    : player_(
          ports.loop,
          {.program = ownPlayer(),
           .disk = ports.disk.owners,
           .lost = [&trace = ports.trace](const std::string& why) { trace.note("player:", why); }},
          frontEnd.tell),
      facts_(ports.disk.owners, frontEnd.display),
      program(machineOf(ports, frontEnd, player_, facts_)), directories_(ports.directories),
      comeForward_(frontEnd.raise),
      remote_(ports.loop, sessionBusAddress(), program.playback.remote,
              {.raise = raised(frontEnd.raise, program.mediaWindow.list),
               .quit = [this] { program.exit(); },
               .open = [this](const std::string& address) { open({address}); }}),
      copy_(ports.loop, sessionBusAddress(), ports.directory.path(),
            {.open =
                 [this](const std::vector<std::string>& addresses) {
                     if (comeForward_)
                         comeForward_();
                     open(addresses);
                 },
             .press = [this](const std::vector<std::string>& buttons) { press(buttons); }}) {
    ports.process.beforeEnd(frontEnd.close);
    ports.loop.onSignals(endSignals, [this] { program.end(); });
}

Completion LinuxProgram::completionOf(std::string_view typed) const {
    return larkspin::completionOf(program.shell.state, typed);
}

void LinuxProgram::begin(const Started& started) {
    open(started.files);
    press(started.presses);
}

void LinuxProgram::press(const std::vector<std::string>& buttons) {
    for (const std::string& button : buttons)
        program.whenRunning([this, button] { program.playback.remote.press(button); });
}

// What is no file of this machine is told by its address.
void LinuxProgram::open(const std::vector<std::string>& addresses) {
    std::vector<std::string> paths;
    for (const std::string& address : addresses) {
        const auto path = pathOfAddress(address);
        paths.push_back(path ? directories_.drivePath(*path) : address);
    }
    if (!paths.empty())
        program.bring(paths, BroughtFiles::Then::playing);
}

} // namespace larkspin
