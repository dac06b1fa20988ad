// larkspin in a terminal.
#include "app/program.h"
#include "platform/gstreamer/gst_media_control.h"
#include "platform/posix/poll_loop.h"
#include "platform/posix/posix_directories.h"
#include "platform/posix/posix_files.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/user_directories.h"
#include "platform/terminal/terminal.h"

#include <csignal>

using namespace larkspin;

int main() {
    PollLoop loop;
    Terminal terminal(loop, loginName());
    PosixFiles files;
    PosixDirectories directories;
    GstMediaControl player(loop, {}, [&](const std::string& line) { terminal.screen.note(line); });
    PosixProcess process(userLockFile());
    process.beforeEnd([&] { terminal.close(); });

    Program program({.loop = loop,
                     .files = files,
                     .directories = directories,
                     .dialogs = terminal.dialogs,
                     .room = terminal.room,
                     .player = player,
                     .process = process,
                     .dataDirectory = userDataDirectory(),
                     .fadesWindows = false});
    loop.onSignals({SIGTERM, SIGHUP, SIGINT}, [&] { program.end(); });
    terminal.room.connect([&](const ChatLine& line) { program.hear(line); });
    program.start();
    terminal.open([&] { program.end(); });
    loop.waitFor([] { return false; }, Nanoseconds::max());
}
