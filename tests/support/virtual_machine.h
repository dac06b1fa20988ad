// A whole running program in one line, on a machine that a test controls: temporary disk,
// virtual clock, recorded room and boxes, a silent player whose songs have given lengths.
//
//     VirtualMachine machine;
//     machine.song("rock", "ride.mp3", 180s);
//     machine.start();
//     EXPECT_EQ(machine.answer("'play ride"), "playing:  <b>1</b>.  <b><u>ride</b></u>");
#pragma once

#include "app/machine.h"
#include "chat/chat_lines.h"
#include "companions/launching.h"
#include "host/host_client.h"
#include "library/directories.h"
#include "platform/posix/posix_directories.h"
#include "platform/posix/posix_files.h"
#include "playback/media_control.h"
#include "shell/app_state.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"
#include "shell/kept_files.h"
#include "shell/process.h"
#include "shell/trace.h"
#include "support/temp_directory.h"
#include "support/virtual_loop.h"
#include "support/virtual_outside.h"

#include <chrono>
#include <deque>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class Program;
struct Window;

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

// Directories that take their time: so long events are served until what lies in one of them is
// answered for. From the bound on it hangs.
class SlowDisk {
public:
    explicit SlowDisk(EventLoop& loop) : loop_(loop) {}

    bool answers(const std::string& directory); // after that time
    std::map<std::string, std::chrono::duration<double>> spans;
    static constexpr std::chrono::duration<double> bound = std::chrono::seconds(10);

private:
    EventLoop& loop_;
};

// The real files of a temporary disk, with faults on demand.
class FaultyFiles : public PosixFiles {
public:
    FaultyFiles(Wastebasket wastebasket, SlowDisk& disk)
        : PosixFiles(std::move(wastebasket)), disk_(disk) {}
    Presence presence(const std::string& path) override;
    std::optional<std::uintmax_t> size(const std::string& path) override;
    FileRead read(const std::string& path, std::size_t largest = largestFile) override;
    FileChange replace(const std::string& path, const std::string& contents) override;
    FileChange append(const std::string& path, const std::string& text) override;
    FileChange makeDirectory(const std::string& path) override;
    FileChange rename(const std::string& path, const std::string& newName) override;
    FileChange moveToWastebasket(const std::string& path) override;
    bool refusesMoves = false;                       // no file is renamed or thrown away
    bool full = false;                               // every write fails
    int fullAfter = std::numeric_limits<int>::max(); // the disk fills up after so many writes
    int writes = 0;
    std::string unwritable;  // every write to a file whose path ends so
    bool unreadable = false; // every read fails
    std::string broken;      // every read of a file whose path ends so
    int failReadAt = 0;      // this one does, counted from 1
    int failEach = 0;        // and each of that many
    int reads = 0;

private:
    SlowDisk& disk_;
};

// The real directories of the temporary disk. A scan of all drives would walk the real disk,
// so that the machine has only those that a test gives it.
class ScriptedDirectories : public PosixDirectories {
public:
    ScriptedDirectories(std::string home, SlowDisk& disk)
        : PosixDirectories(std::move(home)), disk_(disk) {}
    DirectoryRead list(const std::string& path) override;
    std::vector<std::string> drives() override { return driveTexts; }
    std::vector<std::string> driveTexts;
    std::string behindDrives; // what the roots of drives other than c: show

private:
    SlowDisk& disk_;
};

// What was said in the room. The owner is signed on as "Owner".
class RecordedRoom : public HostClient {
public:
    RecordedRoom(EventLoop& loop, ChatLines& hearers) : loop_(loop), hearers_(hearers) {}

    std::string currentScreenName() override { return screenName; }
    void sendChatLine(const std::string& line) override;
    bool tellOwner(const std::string& text) override {
        told.push_back(text);
        return tellsOwner;
    }
    void clearChatInput() override { input.clear(); }

    std::string screenName = "Owner";
    std::string input = "half a line";
    bool open = true;
    std::vector<std::string> lines, told; // to the room, and to the owner alone
    bool tellsOwner = true;               // as far as the client can
    // Happens in the middle of each message, when the program lets events run.
    std::function<void(const std::string& message)> inMessage;

private:
    EventLoop& loop_;
    ChatLines& hearers_;
};

// Answers come in order; a question without one is dismissed.
class ScriptedDialogs : public Dialogs {
public:
    void titledBox(const std::string& title, const std::string& text) override;
    void stopBox(const std::string& text) override { boxes.push_back(text); }
    std::optional<std::string> openFile(const FileQuestion& question) override;
    std::vector<std::string> openFiles(const FileQuestion& question) override;
    std::optional<std::string> saveFile(const FileQuestion& question) override {
        return openFile(question);
    }
    std::optional<std::string> openDirectory(const FileQuestion& question) override {
        return openFile(question);
    }
    void dismissAll() override { ++dismissals_; }

    std::vector<std::string> boxes;          // and the questions
    std::vector<std::string> titles;         // of boxes with one of their own, and of dialogs
    FileQuestion fileQuestion;               // the last one
    std::deque<std::string> answers;         // "yes" to a question, a text, a path
    std::function<void()> whileOpen = [] {}; // what happens while one of them is open

private:
    bool askYesNo(const std::string& question, Preset preset) override;
    std::optional<std::string> askLine(const TextQuestion& question) override;
    std::optional<std::string> nextAnswer(); // none if it is empty
    int dismissals_ = 0;
};

// The tray icon and the popup menu that are there, for choosing from by name.
class RecordedDesktop : public Desktop {
public:
    void addTrayIcon(const TrayIcon& added) override { icon = added; }
    void removeTrayIcon() override { icon.reset(); }
    void popUp(const Menu& menu) override { popup = menu; }

    std::optional<TrayIcon> icon;
    std::optional<Menu> popup;
};

// What was to be started; nothing is.
class RecordedLaunching : public Launching {
public:
    bool run(const std::string& path) override { return start("run " + path); }
    bool open(const std::string& pathOrAddress) override { return start("open " + pathOrAddress); }

    std::vector<std::string> started; // "run c:\x.exe", "open c:\x.jpg", tried ones as well
    bool works = true;

private:
    bool start(std::string what) {
        started.push_back(std::move(what));
        return works;
    }
};

// Plays without sound on the virtual clock. Lengths are told by the path that was opened;
// a file without one can't be decoded.
class SilentPlayer : public MediaControl {
public:
    explicit SilentPlayer(EventLoop& loop) : loop_(loop) {}

    void Open(const std::string& fileName) override;
    void Play() override;
    void Pause() override;
    void Stop() override;
    larkspin::PlayState PlayState() override;
    std::optional<std::string> failure() override;
    std::string FileName() override { return fileName_; }
    SongTags tags() override { return told; }
    double Duration() override { return duration_; }
    double CurrentPosition() override;
    void setCurrentPosition(double seconds) override;
    void setRate(double rate) override;
    void setVolume(int v) override { volume = v; }
    void setMute(bool m) override { mute = m; }
    void setOwnControlsVisible(bool) override {}
    void setSize(int, int) override {}

    std::map<std::string, double> lengths; // seconds, by drive path
    std::vector<std::string> opened;
    std::string whyUnplayable; // what has no length
    SongTags told;             // of any song
    int volume = 0;
    bool mute = false;
    double rate = 1;
    std::chrono::duration<double> closing{0}; // until it is off its file

private:
    void advance();

    EventLoop& loop_;
    std::string fileName_;
    double duration_ = 0, position_ = 0;
    Nanoseconds asOf_{}; // the moment of position_
    Nanoseconds closed_{};
    bool stopped_ = false; // by hand
    larkspin::PlayState state_ = larkspin::PlayState::closed;
};

// Ends by being thrown: nothing between the program's end and the machine catches it.
struct ProcessEnded {};

class VirtualProcess : public Process {
public:
    bool claimOnlyCopy() override { return true; }
    [[noreturn]] void end() override { throw ProcessEnded(); }
};

class VirtualMachine {
public:
    VirtualMachine();
    ~VirtualMachine();
    // In its first run on a playlist of these songs.
    explicit VirtualMachine(const Lines& songs, std::chrono::duration<double> length = 180s);

    // The disk.
    // The contents of a file, "" when it is missing.
    std::string dataFile(const std::string& name) const { return disk.read("data/" + name); }
    void writeDataFile(const std::string& name, const std::string& contents) {
        disk.write("data/" + name, contents);
    }
    std::string drive(const std::string& below) const; // drive path of a path on the disk
    // Puts a song of that length on the disk, below music\<directory>, and gives its row.
    std::string song(const std::string& directory, const std::string& name,
                     std::chrono::duration<double> length = 180s);
    // The same for many, in the playlist that the next start loads.
    void playlist(const std::vector<std::string>& names,
                  std::chrono::duration<double> length = 180s);
    std::string setting(const std::string& key);
    Lines traced() const; // the last facts, without the time

    // The program. Each of these is true while the process lives.
    bool start() { return startOn(directories); }
    bool startOn(Directories& others); // than the machine's own
    bool restart();
    bool endProcess(); // by a signal, say
    // The owner says a line, its effects run, and then he waits.
    bool owner(const std::string& line, std::chrono::duration<double> wait = 0s);
    void says(const Lines& several) {
        for (const std::string& line : several)
            owner(line);
    }
    bool somebody(const std::string& name, const std::string& line);
    bool advance(std::chrono::duration<double> span);
    bool run(const std::function<void()>& action);
    // What happens once, in the middle of the first message that begins so.
    void inMessage(const std::string& beginning, const std::function<void()>& action);
    void heard(const ChatLine& line) { lines.heard(line, {}); }
    void hear(const std::string& line) { heard({room.screenName, line}); } // of the owner

    // What the program has said, without the style around it; the owner's own lines are not
    // among them. The last one, and all since `forget`.
    std::string said() const;
    std::vector<std::string> allSaid() const;
    std::string lastBox() const { return dialogs.boxes.empty() ? "" : dialogs.boxes.back(); }
    void forget();
    std::vector<std::string> saidWithin(std::chrono::duration<double> span);
    // All that a line, or something done, brings about: what is said, then the boxes as
    // "[box] text", a line each.
    std::string answer(const std::string& line) {
        return answerTo([&] { owner(line); });
    }
    std::string answerTo(const std::function<void()>& hand);

    // Windows and menus, by name. The window, the control and the entry must exist; a window that
    // is hidden is brought up first.
    Window& window(const std::string& name);
    bool click(const std::string& window, const std::string& control);
    bool doubleClick(const std::string& window, const std::string& control);
    bool chooseFromTray(const std::string& entry);
    bool chooseFromPopup(const std::string& entry);
    // How an entry of the tray's menu shows; check marks stand in front as "*".
    std::string trayEntry(const std::string& entry) const;

    TempDirectory disk;
    VirtualLoop loop;
    SlowDisk slowDisk{loop};
    FaultyFiles files{Wastebasket((disk.path() / "share").native()), slowDisk};
    Trace trace;
    KeptFiles kept{files, DataDirectory(drive("data")), trace}; // the program's road to them
    ScriptedDirectories directories;
    ScriptedDialogs dialogs;
    RecordedDesktop desktop;
    ChatLines lines{loop};
    RecordedRoom room{loop, lines};
    SilentPlayer player;
    RecordedLaunching launching;
    VirtualProcess process;
    SettablePlayer otherPlayer;
    SettableFacts facts;
    RecordedPower power;
    HostClient* host = &room; // what the next start runs on
    bool fadesWindows = false;
    Lines notes;                      // last words, after the room's end
    std::unique_ptr<Program> program; // made at start
    AppState& state();
    Lines titles(); // of the songs in both lists, which hold the same
};

// The message of a styled line in the default style; the line itself in any other.
std::string messageOf(const std::string& line);

Lines rowsOf(const RowList& list);

} // namespace larkspin
