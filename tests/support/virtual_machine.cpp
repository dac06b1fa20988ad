#include "support/virtual_machine.h"

#include "app/program.h"
#include "platform/posix/drive_paths.h"
#include "shell/control_events.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <utility>

namespace larkspin {

bool SlowDisk::answers(const std::string& directory) {
    const auto found = spans.find(directory);
    const auto span = found == spans.end() ? bound - bound : std::min(found->second, bound);
    if (span > span.zero())
        loop_.waitUntil(loop_.now() + std::chrono::round<Nanoseconds>(span));
    return span < bound;
}

Files::Presence FaultyFiles::presence(const std::string& path) {
    return disk_.answers(songOfPath(path).directory) ? PosixFiles::presence(path)
                                                     : Presence::unanswered;
}

std::optional<std::uintmax_t> FaultyFiles::size(const std::string& path) {
    return disk_.answers(songOfPath(path).directory) ? PosixFiles::size(path) : std::nullopt;
}

FileRead FaultyFiles::read(const std::string& path, std::size_t largest) {
    if (!disk_.answers(songOfPath(path).directory))
        return {FileRead::Outcome::failed, {}, noAnswer};
    const bool isItsTurn = ++reads == failReadAt || (failEach > 0 && reads % failEach == 0);
    if (isItsTurn || unreadable || (!broken.empty() && path.ends_with(broken)))
        return {FileRead::Outcome::failed, {}, "the disk can't be read"};
    return PosixFiles::read(path, largest);
}

FileChange FaultyFiles::replace(const std::string& path, const std::string& contents) {
    full = full || writes >= fullAfter;
    ++writes;
    if (full || (!unwritable.empty() && path.ends_with(unwritable)))
        return {"no space left on the device"};
    return PosixFiles::replace(path, contents);
}

FileChange FaultyFiles::append(const std::string& path, const std::string& text) {
    if (!disk_.answers(songOfPath(path).directory))
        return {noAnswer, true};
    ++writes;
    if (full || (!unwritable.empty() && path.ends_with(unwritable)))
        return {"no space left on the device"};
    return PosixFiles::append(path, text);
}

FileChange FaultyFiles::makeDirectory(const std::string& path) {
    return full ? FileChange{"no space left on the device"} : PosixFiles::makeDirectory(path);
}

FileChange FaultyFiles::rename(const std::string& path, const std::string& newName) {
    if (!disk_.answers(songOfPath(path).directory))
        return {noAnswer, true};
    return refusesMoves ? FileChange{"permission denied"} : PosixFiles::rename(path, newName);
}

FileChange FaultyFiles::moveToWastebasket(const std::string& path) {
    if (!disk_.answers(songOfPath(path).directory))
        return {noAnswer, true};
    return refusesMoves ? FileChange{"permission denied"} : PosixFiles::moveToWastebasket(path);
}

DirectoryRead ScriptedDirectories::list(const std::string& path) {
    if (!disk_.answers(path))
        return DirectoryRead(DirectoryRead::Outcome::unanswered);
    const bool isOther = !behindDrives.empty() && path.ends_with(":\\") && path != "c:\\";
    return PosixDirectories::list(isOther ? behindDrives : path);
}

void RecordedRoom::sendChatLine(const std::string& line) {
    if (!open)
        return;
    lines.push_back(line);
    if (inMessage)
        loop_.post([this, line] {
            if (const auto handler = inMessage) // which may replace itself
                handler(messageOf(line));
        });
    hearers_.said({screenName, line}, {});
}

void ScriptedDialogs::titledBox(const std::string& title, const std::string& text) {
    boxes.push_back(text);
    if (title != "larkspin")
        titles.push_back(title);
    Task{whileOpen}(); // which may replace itself
}

std::optional<std::string> ScriptedDialogs::nextAnswer() {
    const int before = dismissals_;
    Task{whileOpen}();
    if (answers.empty() || before != dismissals_)
        return {};
    std::string answer = std::move(answers.front());
    answers.pop_front();
    return answer.empty() ? std::nullopt : std::optional(std::move(answer));
}

bool ScriptedDialogs::askYesNo(const std::string& question, Preset) {
    boxes.push_back(question);
    return nextAnswer() == "yes";
}

std::optional<std::string> ScriptedDialogs::askLine(const TextQuestion& question) {
    boxes.push_back(question.prompt);
    titles.push_back(question.title);
    return nextAnswer();
}

std::optional<std::string> ScriptedDialogs::openFile(const FileQuestion& question) {
    titles.push_back(question.title);
    fileQuestion = question;
    return nextAnswer();
}

std::vector<std::string> ScriptedDialogs::openFiles(const FileQuestion& question) {
    titles.push_back(question.title);
    fileQuestion = question;
    std::vector<std::string> paths;
    while (auto answer = nextAnswer())
        paths.push_back(std::move(*answer));
    return paths;
}

void SilentPlayer::Open(const std::string& fileName) {
    fileName_ = fileName;
    stopped_ = false;
    duration_ = position_ = 0;
    asOf_ = loop_.now();
    if (fileName.empty()) {
        state_ = PlayState::stopped;
        closed_ = asOf_ + std::chrono::round<Nanoseconds>(closing);
        return;
    }
    opened.push_back(fileName);
    const auto known = lengths.find(fileName);
    state_ = known == lengths.end() ? PlayState::waiting : PlayState::playing;
    if (known != lengths.end())
        duration_ = known->second;
}

void SilentPlayer::Play() {
    advance();
    if (state_ == PlayState::paused)
        state_ = PlayState::playing;
}

void SilentPlayer::Pause() {
    advance();
    if (state_ == PlayState::playing)
        state_ = PlayState::paused;
}

void SilentPlayer::Stop() {
    advance();
    stopped_ = true;
    if (state_ != PlayState::closed)
        state_ = PlayState::stopped;
}

PlayState SilentPlayer::PlayState() {
    advance();
    return state_;
}

std::optional<std::string> SilentPlayer::failure() {
    if (stopped_ || fileName_.empty() || PlayState() != PlayState::stopped ||
        lengths.contains(fileName_))
        return std::nullopt;
    return whyUnplayable;
}

double SilentPlayer::CurrentPosition() {
    advance();
    return position_;
}

void SilentPlayer::setCurrentPosition(double seconds) {
    advance();
    position_ = std::clamp(seconds, 0.0, duration_);
}

void SilentPlayer::setRate(double r) {
    advance();
    if (r > 0)
        rate = r;
}

void SilentPlayer::advance() {
    const double passed = std::chrono::duration<double>(loop_.now() - asOf_).count();
    asOf_ = loop_.now();
    if (fileName_.empty()) {
        state_ = asOf_ < closed_ ? PlayState::stopped : PlayState::closed;
    } else if (state_ == PlayState::playing) {
        position_ = std::min(position_ + passed * rate, duration_);
        if (position_ >= duration_)
            state_ = PlayState::stopped;
    } else if (state_ == PlayState::waiting) {
        position_ += passed; // how long it has been tried
        if (position_ >= 2)
            state_ = PlayState::stopped;
    }
}

static TempDirectory quickDisk() {
    if (std::filesystem::is_directory("/dev/shm"))
        ::setenv("TMPDIR", "/dev/shm", 0); // in memory, where flushing costs nothing
    return {};
}

namespace {

VirtualMachine* newest = nullptr;

// What has happened on the machine at hand, with the first fault of a test.
class TraceListener : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override { isTold_ = false; }
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (!result.failed() || !newest || std::exchange(isTold_, true))
            return;
        for (const std::string& fact : newest->traced())
            std::cout << "  " << fact << '\n';
    }
    bool isTold_ = false;
};

[[maybe_unused]] const bool isListening = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new TraceListener);
    return true;
}();

} // namespace

VirtualMachine::VirtualMachine()
    : disk(quickDisk()), directories((disk.path() / "home").native(), slowDisk), player(loop) {
    newest = this;
}

VirtualMachine::~VirtualMachine() {
    if (newest == this)
        newest = nullptr;
}

Lines VirtualMachine::traced() const {
    Lines told;
    Trace::Buffer buffer;
    for (std::size_t number = 0; number < trace.size(); ++number)
        told.emplace_back(trace.line(number, buffer).substr(std::size("19:05:12.345")));
    return told;
}

VirtualMachine::VirtualMachine(const Lines& songs, std::chrono::duration<double> length)
    : VirtualMachine() {
    playlist(songs, length);
    start();
}

std::string VirtualMachine::drive(const std::string& below) const {
    return drivePath((disk.path() / below).native());
}

std::string VirtualMachine::song(const std::string& directory, const std::string& name,
                                 std::chrono::duration<double> length) {
    const std::string below = "music/" + directory + "/" + name;
    disk.write(below, "sound");
    player.lengths[drive(below)] = length.count();
    const Song song = songOfFile(nameFromDisk(name), drive("music/" + directory));
    return makerow(song.name, song.extension, song.directory);
}

void VirtualMachine::playlist(const std::vector<std::string>& names,
                              std::chrono::duration<double> length) {
    std::string rows;
    for (const std::string& name : names)
        rows += song("rock", name, length) + "\r\n";
    writeDataFile("temp.lst", rows);
}

std::string VirtualMachine::setting(const std::string& key) {
    return Settings(files, DataDirectory(drive("data"))).get(key);
}

bool VirtualMachine::startOn(Directories& others) {
    program.reset();
    program = std::make_unique<Program>(
        Machine{.loop = loop,
                .files = kept,
                .directories = others,
                .dialogs = dialogs,
                .desktop = desktop,
                .host = *host,
                .lines = lines,
                .player = player,
                .launching = launching,
                .otherPlayer = otherPlayer,
                .facts = facts,
                .power = power,
                .process = process,
                .trace = trace,
                .dataDirectory = drive("data"),
                .fadesWindows = fadesWindows,
                .note = [this](const std::string& line) { notes.push_back(line); }});
    return run([this] { program->start(); });
}

bool VirtualMachine::restart() {
    return run([this] { program->restart(); });
}

bool VirtualMachine::endProcess() {
    return run([this] { program->end(); });
}

bool VirtualMachine::owner(const std::string& line, std::chrono::duration<double> wait) {
    return somebody(host->currentScreenName(), line) && advance(wait);
}

bool VirtualMachine::somebody(const std::string& name, const std::string& line) {
    return run([&] {
        loop.post([this, name, line] { heard({name, line}); });
        loop.serveTurn();
    });
}

bool VirtualMachine::advance(std::chrono::duration<double> span) {
    return run([&] { loop.waitUntil(loop.now() + std::chrono::round<Nanoseconds>(span)); });
}

bool VirtualMachine::run(const std::function<void()>& action) {
    const auto underWay = [this] { return program ? program->chat.recitals.count() : 0; };
    const std::size_t before = underWay();
    try {
        action();
        loop.waitWhile([&] { return underWay() > before; });
        return true;
    } catch (const ProcessEnded&) {
        program.reset();
        return false;
    }
}

void VirtualMachine::inMessage(const std::string& beginning, const std::function<void()>& action) {
    room.inMessage = [this, beginning, action](const std::string& message) {
        if (!message.starts_with(beginning))
            return;
        room.inMessage = {};
        action();
    };
}

AppState& VirtualMachine::state() {
    return program->shell.state;
}

Lines VirtualMachine::titles() {
    Lines found = rowsOf(state().masterList);
    EXPECT_EQ(rowsOf(state().playlistView), found);
    for (std::string& row : found)
        row = songOfRow(row).title();
    return found;
}

Window& VirtualMachine::window(const std::string& name) {
    for (Window* candidate : program->windows())
        if (candidate->name == name)
            return *candidate;
    std::abort();
}

bool VirtualMachine::click(const std::string& windowName, const std::string& control) {
    window(windowName).visible = true;
    return run([&] { EXPECT_TRUE(press(window(windowName), control)) << control; });
}

bool VirtualMachine::doubleClick(const std::string& windowName, const std::string& control) {
    window(windowName).visible = true;
    return run([&] { EXPECT_TRUE(pressTwice(window(windowName), control)) << control; });
}

static std::optional<MenuEntry> findEntry(const std::vector<MenuEntry>& entries,
                                          const std::string& name) {
    for (const MenuEntry& entry : entries) {
        if (entry.name == name)
            return entry;
        if (auto below = findEntry(entry.children, name))
            return below;
    }
    return std::nullopt;
}

static void choose(const Menu& menu, const std::string& name) {
    const Task action = findEntry(menu.entries(), name).value().action;
    if (action)
        action();
}

bool VirtualMachine::chooseFromTray(const std::string& entry) {
    return run([&] { choose(desktop.icon.value().menu, entry); });
}

bool VirtualMachine::chooseFromPopup(const std::string& entry) {
    const Menu menu = std::exchange(desktop.popup, {}).value();
    return run([&] { choose(menu, entry); });
}

std::string VirtualMachine::trayEntry(const std::string& entry) const {
    const auto found = findEntry(desktop.icon.value().menu.entries(), entry).value();
    return (found.checked ? "*" : "") + found.caption;
}

std::string messageOf(const std::string& line) {
    static const std::string before =
        "</html><font face=\"arial narrow\" color=#5083A9>'\u00AClks - "
        "<font face=\"arial narrow\" color=#0066BB>";
    static const std::string after = "</b><font face=\" \" color=#> ";
    if (!line.starts_with(before) || !line.ends_with(after))
        return line;
    return line.substr(before.size(), line.size() - before.size() - after.size());
}

Lines rowsOf(const RowList& list) {
    Lines rows;
    for (int row = 0; row < list.count(); ++row)
        rows.emplace_back(list.row(row));
    return rows;
}

std::string VirtualMachine::said() const {
    return room.lines.empty() ? "" : messageOf(room.lines.back());
}

std::vector<std::string> VirtualMachine::allSaid() const {
    std::vector<std::string> messages;
    for (const std::string& line : room.lines)
        messages.push_back(messageOf(line));
    return messages;
}

void VirtualMachine::forget() {
    room.lines.clear();
    dialogs.boxes.clear();
}

std::vector<std::string> VirtualMachine::saidWithin(std::chrono::duration<double> span) {
    forget();
    advance(span);
    return allSaid();
}

std::string VirtualMachine::answerTo(const std::function<void()>& hand) {
    forget();
    hand();
    std::string seen;
    for (const std::string& message : allSaid())
        seen += (seen.empty() ? "" : "\n") + message;
    for (const std::string& text : dialogs.boxes)
        seen += (seen.empty() ? "[box] " : "\n[box] ") + text;
    return seen;
}

} // namespace larkspin
