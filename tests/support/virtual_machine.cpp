#include "support/virtual_machine.h"

#include "platform/posix/drive_paths.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace larkspin {

bool FaultyFiles::replace(const std::string& path, const std::string& contents) {
    full = full || writes >= fullAfter;
    ++writes;
    return !full && PosixFiles::replace(path, contents);
}

bool FaultyFiles::makeDirectory(const std::string& path) {
    return !full && PosixFiles::makeDirectory(path);
}

void RecordedRoom::sendChatLine(const std::string& line) {
    if (!open)
        return;
    lines.push_back(line);
    loop_.post([this, line] { hear({screenName, line}); });
    loop_.serveTurn();
}

bool ScriptedDialogs::ask(const std::string& question) {
    boxes.push_back(question);
    if (answers.empty())
        return false;
    const bool answer = answers.front();
    answers.erase(answers.begin());
    return answer;
}

void SilentPlayer::Open(const std::string& fileName) {
    fileName_ = fileName;
    duration_ = position_ = 0;
    asOf_ = loop_.now();
    if (fileName.empty()) {
        state_ = PlayState::closed;
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
    if (state_ != PlayState::closed)
        state_ = PlayState::stopped;
}

PlayState SilentPlayer::PlayState() {
    advance();
    return state_;
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
    if (state_ == PlayState::playing) {
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

VirtualMachine::VirtualMachine()
    : disk(quickDisk()), directories((disk.path() / "home").native()), room(loop), player(loop) {
    room.hear = [this](const ChatLine& line) {
        if (program)
            program->hear(line);
    };
}

VirtualMachine::VirtualMachine(const Lines& songs, std::chrono::duration<double> length)
    : VirtualMachine() {
    playlist(songs, length);
    start();
}

std::string VirtualMachine::drive(const std::string& below) const {
    return drivePath((disk.path() / below).native());
}

std::string VirtualMachine::dataFile(const std::string& name) const {
    return disk.read("data/" + name);
}

void VirtualMachine::writeDataFile(const std::string& name, const std::string& contents) {
    disk.write("data/" + name, contents);
}

std::string VirtualMachine::song(const std::string& directory, const std::string& name,
                                 std::chrono::duration<double> length) {
    const std::string below = "music/" + directory + "/" + name;
    disk.write(below, "sound");
    player.lengths[drive(below)] = length.count();
    const Song song = songOfFile(driveName(name), drive("music/" + directory));
    return makerow(song.name, song.extension, song.directory);
}

void VirtualMachine::playlist(const std::vector<std::string>& names,
                              std::chrono::duration<double> length) {
    std::string lines;
    for (const std::string& name : names)
        lines += song("rock", name, length) + "\r\n";
    writeDataFile("temp.lst", lines);
}

std::string VirtualMachine::setting(const std::string& key) {
    return Settings(files, DataDirectory(drive("data"))).get(key);
}

bool VirtualMachine::start() {
    program.reset();
    program = std::make_unique<Program>(Machine{loop, files, directories, dialogs, room, player,
                                                process, drive("data"), fadesWindows});
    return run([this] { program->start(); });
}

bool VirtualMachine::owner(const std::string& line) {
    return owner(line, 0s);
}

bool VirtualMachine::owner(const std::string& line, std::chrono::duration<double> wait) {
    return somebody(room.screenName, line) && advance(wait);
}

bool VirtualMachine::somebody(const std::string& name, const std::string& line) {
    return run([&] {
        loop.post([this, name, line] { program->hear({name, line}); });
        loop.serveTurn();
    });
}

bool VirtualMachine::advance(std::chrono::duration<double> span) {
    return run([&] { loop.waitUntil(loop.now() + std::chrono::round<Nanoseconds>(span)); });
}

bool VirtualMachine::run(const std::function<void()>& action) {
    try {
        action();
        return true;
    } catch (const ProcessEnded&) {
        program.reset();
        return false;
    }
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

std::string VirtualMachine::said() const {
    return room.lines.empty() ? "" : messageOf(room.lines.back());
}

std::vector<std::string> VirtualMachine::allSaid() const {
    std::vector<std::string> messages;
    for (const std::string& line : room.lines)
        messages.push_back(messageOf(line));
    return messages;
}

bool VirtualMachine::hasSaid(std::string_view text) const {
    const auto all = allSaid();
    return std::find(all.begin(), all.end(), text) != all.end();
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

std::string VirtualMachine::answer(const std::string& line) {
    forget();
    owner(line);
    std::string seen;
    for (const std::string& message : allSaid())
        seen += (seen.empty() ? "" : "\n") + message;
    for (const std::string& text : dialogs.boxes)
        seen += (seen.empty() ? "[box] " : "\n[box] ") + text;
    return seen;
}

void converse(VirtualMachine& machine, const std::vector<Turn>& turns) {
    for (const Turn& turn : turns) {
        for (const std::string& line : turn.lines) {
            SCOPED_TRACE(line);
            EXPECT_EQ(machine.answer(line), turn.answer);
        }
        machine.advance(turn.wait);
    }
}

} // namespace larkspin
