#include "platform/terminal/room/screen_room.h"

#include "host/new_lines.h"
#include "platform/terminal/room/screen_keys.h"
#include "platform/terminal/terminal_text.h"
#include "shell/kept_files.h"

#include <cstdint>

namespace larkspin {

ScreenRoom::ScreenRoom(EventLoop& loop, RoomScreen screen, ChatLines& lines,
                       IrcNetworks::MakeConnection connections, KeptFiles& files,
                       const DataDirectory& directory, const std::string& screenName)
    : screen_(std::move(screen)), history_(files, directory.historyFile()),
      rooms(loop, lines, std::move(connections), *this, files, directory, screenName,
            {.clearInput = [this] { layer.view.line.typing.empty(); },
             .changed = [this] { layer.roomChanged(); }}),
      desktop([this](std::string_view, const std::string& text) { tell(withoutGaps(text)); }),
      commands([this](std::string_view, const std::string& text) { tell(withoutGaps(text)); },
               desktop, rooms.slashWords(),
               [this](const std::string& line) { rooms.room.say(line); }),
      lines_(loop, rooms, commands.words()),
      peopleMenu(rooms.conversations, rooms.own, rooms.networks,
                 [this](const std::string& line) { lines_.act(line); }),
      layer(loop, screen_.layers, rooms.room, rooms.conversations, history_, layerTasks()) {
    LineTyping& line = layer.view.line.typing;
    line.holdAfter(&IrcWords::asksPassword);
    line.maskBy([this](const std::string& typed) {
        return rooms.withoutSecrets(typed, layer.view.halfTyped.begun());
    });
    commands.add({mouseWord(), keysWord([this](const std::string& text) { tell(text); })});
    rooms.preferences.onChange([this] { showLooks(); });
    showLooks();
}

RoomLayer::Tasks ScreenRoom::layerTasks() {
    return {
        .take = [this](const std::string& line,
                       const Conversations::Begun& begun) { lines_.take(line, begun); },
        .go = [this](const std::string& place) { rooms.goTo(place); },
        .openLink = [this](const std::string& address) { openLink_(address); },
        .menuOf = [this](const std::string& name) { return peopleMenu.of(name); },
        .talkTo = [this](const std::string& name) { peopleMenu.talkTo(name); },
        .popUp = screen_.popUp,
        .openMenus = [this](int row) { screen_.openMenus(menus_, row); },
        .help = [this] { does("/help"); },
        .quit = [this] { does("/quit"); },
        .tellHowToLeave = [this] { tellHowToLeave(); },
        .pressed = screen_.pressed,
        .called =
            [this](const OwnerCall&) {
                if (rooms.preferences.notifies())
                    screen_.ring();
            },
        .title = screen_.setTitle,
        .ring = screen_.ring,
    };
}

// Once, however long the key is held.
void ScreenRoom::tellHowToLeave() {
    const auto& lines = rooms.conversations.front().lines();
    if (lines.empty() || lines.back().text != howToLeave)
        tell(howToLeave);
}

// The terminal itself marks text only while it has the mouse.
SlashWord ScreenRoom::mouseWord() {
    const auto change = [this](std::string_view rest) {
        if (!rest.empty())
            return false;
        takesMouse_ = !takesMouse_;
        screen_.takeMouse(takesMouse_);
        tell(takesMouse_ ? "the mouse works what it points at"
                         : "the mouse is the terminal's: it marks text to be copied");
        return true;
    };
    return {.name = "mouse",
            .arguments = "",
            .help = "leaves the mouse to the terminal, to copy text, or takes it back",
            .run = change,
            .topic = "larkspin"};
}

void ScreenRoom::showLooks() {
    layer.view.lookAs(rooms.preferences.colors());
    layer.view.stamp(rooms.preferences.showsStamps());
    layer.view.colorNames(rooms.preferences.colorsNames());
    layer.roomChanged();
}

void ScreenRoom::completeBy(LineTyping::Complete complete) {
    layer.view.line.typing.onTab([this, complete = std::move(complete)](std::string_view typed) {
        return rooms.completionOf(typed, commands.words(), complete);
    });
}

void ScreenRoom::open(std::vector<Window*> windows, Task quit) {
    commands.connect(std::move(windows), [this, quit = std::move(quit)] {
        rooms.words.quits();
        quit();
    });
    lines_.open();
    rooms.takeUpAgain();
}

void ScreenRoom::offer(const std::string& line) {
    if (rooms.conversations.front().isAtHome())
        does(line);
    else
        begin(line);
}

void ScreenRoom::helpToType(const std::string& word) {
    commands.run("/help /" + word);
    if (!layer.view.line.typing.isBegun())
        begin('/' + word + ' ');
}

void ScreenRoom::begin(const std::string& line) {
    layer.view.line.typing.put({.text = line, .cursor = Draft::atEnd});
}

void ScreenRoom::tell(const std::string& text) {
    rooms.conversations.tell(KeptLine::Kind::answer, text);
}

std::vector<std::string> ScreenRoom::close() {
    const std::uint64_t before = rooms.conversations.lastNumber();
    rooms.finish();
    layer.dismissPassword();
    history_.save();
    std::vector<std::string> last;
    for (const auto& each : rooms.conversations.all())
        for (const KeptLine& line : each->lines())
            if (line.number > before && line.kind == KeptLine::Kind::answer)
                last.push_back(wordsOf(line));
    return last;
}

} // namespace larkspin
