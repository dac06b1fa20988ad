// All that the program needs of the machine it runs on, as one hand of ports. A front end
// makes them and hands them over; they must outlive the program.
#pragma once

#include <functional>
#include <string>

namespace larkspin {

class ChatLines;
class Desktop;
class Dialogs;
class Directories;
class EventLoop;
class HostClient;
class KeptFiles;
class Launching;
class MachineFacts;
class MediaControl;
class OtherPlayer;
class Power;
class Process;
class Trace;

struct Machine {
    EventLoop& loop;
    KeptFiles& files;
    Directories& directories;
    Dialogs& dialogs;
    Desktop& desktop;
    HostClient& host;
    ChatLines& lines; // of its room; the program listens to them
    MediaControl& player;
    Launching& launching;
    OtherPlayer& otherPlayer;
    MachineFacts& facts;
    Power& power;
    Process& process;
    Trace& trace;              // what has happened last
    std::string dataDirectory; // drive path without a trailing backslash
    bool fadesWindows;         // the desktop can draw the splash half transparent
    // A last word, where nothing can be said in the room any more.
    std::function<void(const std::string& line)> note = [](const std::string&) {};
};

} // namespace larkspin
