#include "platform/terminal/room/room_layer.h"

#include "host/conversation_rows.h"
#include "host/conversations.h"
#include "host/link_opening.h"
#include "text/visible.h"

#include <utility>

namespace larkspin {

namespace {

using Kind = KeyStroke::Kind;
using Mouse = MouseStroke::Kind;

constexpr int rowsOfWheel = 3;

} // namespace

RoomLayer::RoomLayer(EventLoop& loop, Layers& layers, const ShownRoom& room,
                     const Conversations& conversations, LineHistory& history, Tasks tasks)
    : loop_(loop), layers_(layers), conversations_(conversations), tasks_(std::move(tasks)),
      calls_(conversations), view(loop, room, conversations, history) {
    takeLines();
    layers_.add(*this);
    layers_.add(offers_);
    loop_.beforeSleep([this, lives = std::weak_ptr(lives_)] {
        if (!lives.expired())
            showNew();
    });
}

RoomLayer::~RoomLayer() {
    layers_.remove(offers_);
    layers_.remove(*this);
}

std::optional<Cursor> RoomLayer::Offers::draw(Cells& cells) {
    view_.drawOffers(cells);
    return std::nullopt;
}

// Keys come to it by the line.
bool RoomLayer::Offers::take(const Stroke& stroke) {
    return std::holds_alternative<MouseStroke>(stroke) && view_.line.take(stroke);
}

// A line acts in an event of its own, like a line of anybody.
void RoomLayer::takeLines() {
    view.line.typing.onRefusal(tasks_.ring);
    view.line.typing.onLine([this](std::string line) {
        view.said.toEnd();
        loop_.post([this, lives = std::weak_ptr(lives_), line = std::move(line),
                    begun = view.halfTyped.begun()] {
            if (lives.expired())
                return;
            tasks_.take(line, begun);
            if (!lives.expired())
                view.line.typing.goOn();
        });
    });
}

void RoomLayer::show(SongInPlay& song) {
    view.show(song, {.previous = [&song] { song.previous(); },
                     .playOrPause = [&song] { song.playOrPause(); },
                     .next = [&song] { song.next(); },
                     .moveTo = [&song](int second,
                                       const std::string& path) { song.moveTo(second, path); },
                     .setVolume = [&song](int volume) { song.setVolume(volume); },
                     .openModes =
                         [this, &song] {
                             const Area& bar = view.layout().song;
                             tasks_.popUp(song.modeMenu(), {bar.top, bar.right() - 1});
                         }});
}

void RoomLayer::roomChanged() {
    view.roomChanged();
    layers_.changed();
}

// What it posts makes sure that the screen is drawn, whoever comes to rest first.
void RoomLayer::showNew() {
    tellCalls();
    if (const std::string title = view.title(); std::exchange(title_, title) != title)
        tasks_.title("larkspin - " + title);
    if (!view.showNew() || layers_.isChanged())
        return;
    layers_.changed();
    loop_.post([] {});
}

// Before they are counted as seen. He is called once, until he has looked.
void RoomLayer::tellCalls() {
    if (call_ && calls_.isOver(*call_))
        call_.reset();
    auto call = calls_.take();
    if (!call || call_)
        return;
    tasks_.called(*call);
    call_ = std::move(call);
}

void RoomLayer::askPassword(const std::string& prompt, std::function<void(std::string)> answered) {
    view.setPrompt(prompt);
    layers_.changed();
    view.line.typing.takeSecret([this, answered = std::move(answered)](std::string line) {
        view.setPrompt({});
        loop_.post([answered, line = std::move(line)] { answered(line); });
    });
}

void RoomLayer::dismissPassword() {
    view.setPrompt({});
    layers_.changed();
    view.line.typing.dropSecret();
}

bool RoomLayer::take(const Stroke& stroke) {
    layers_.changed();
    const auto* const key = std::get_if<KeyStroke>(&stroke);
    const bool erases = key && key->ctrl && key->character == U'd';
    isErasing_ = erases && (isErasing_ || view.line.typing.isBegun());
    if (key && takeKey(*key))
        return true;
    if (view.line.take(stroke))
        return true;
    const auto* const mouse = std::get_if<MouseStroke>(&stroke);
    return (key && takePageKey(*key)) || (mouse && takeMouse(*mouse));
}

// Those that are the room's whatever stands in the line.
bool RoomLayer::takeKey(const KeyStroke& key) {
    if (key.alt && !key.ctrl)
        return takeAltKey(key);
    if (key.kind == Kind::function && key.number == 1)
        tasks_.help();
    else if (key.kind == Kind::function && key.number == 10)
        showMenus();
    else if (key.ctrl && key.character == U'd' && !view.line.typing.isBegun())
        return leave();
    else if (key.ctrl && key.character == U'c' && !view.line.typing.isBegun())
        tasks_.tellHowToLeave();
    else if (key.kind == Kind::home && !view.line.typing.isBegun())
        view.said.toStart();
    else if (key.kind == Kind::end && !view.line.typing.isBegun())
        view.said.toEnd();
    else
        return false;
    return true;
}

// Ctrl-D that has just emptied the line, held for too long, must not end all.
bool RoomLayer::leave() {
    if (!isErasing_)
        tasks_.quit();
    return true;
}

bool RoomLayer::takeAltKey(const KeyStroke& key) {
    const char32_t character = key.kind == Kind::character ? key.character : 0;
    if (key.kind == Kind::up || key.kind == Kind::down)
        goTo(&besideFront(conversations_, key.kind == Kind::up ? -1 : 1));
    else if (key.kind == Kind::home)
        view.said.toStart();
    else if (key.kind == Kind::end)
        view.said.toEnd();
    else if (character == U'0')
        goTo(&conversations_.home());
    else if (character > U'0' && character <= U'9')
        goTo(conversations_.numbered(static_cast<int>(character - U'0')));
    else if (character == U'a')
        goTo(nextUnread(conversations_));
    else if (character == U'l')
        showLinks();
    else if (character == U'p')
        showPeople();
    else if (character == U'm')
        showMenus();
    else
        return false;
    return true;
}

bool RoomLayer::takePageKey(const KeyStroke& key) {
    if (key.kind != Kind::pageUp && key.kind != Kind::pageDown)
        return false;
    view.said.scrollPage(key.kind == Kind::pageUp ? -1 : 1);
    return true;
}

bool RoomLayer::takeMouse(const MouseStroke& stroke) {
    if (stroke.kind == Mouse::press)
        tasks_.pressed();
    if (view.bar && view.bar->take(stroke))
        return true;
    if (stroke.kind == Mouse::wheelUp || stroke.kind == Mouse::wheelDown)
        turnWheel(stroke);
    else if (stroke.kind == Mouse::press)
        press(stroke);
    return true;
}

void RoomLayer::turnWheel(const MouseStroke& stroke) {
    const int rows = stroke.kind == Mouse::wheelUp ? -rowsOfWheel : rowsOfWheel;
    if (view.roomsPane.holds(stroke.row, stroke.column))
        view.roomsPane.scroll(rows);
    else if (view.peoplePane.holds(stroke.row, stroke.column))
        view.peoplePane.scroll(rows);
    else
        view.said.scroll(rows);
}

void RoomLayer::press(const MouseStroke& stroke) {
    const int row = stroke.row, column = stroke.column;
    if (view.peoplePane.holds(row, column))
        return pressPeople(stroke);
    if (stroke.button != MouseStroke::Button::left)
        return;
    if (view.roomsPane.holds(row, column))
        goTo(conversations_.find(view.roomsPane.placeAt(row)));
    else if (view.layout().title.holds(row, column))
        showMenus();
    else if (view.said.isCountAt(row, column))
        view.said.toEnd();
    else if (const std::string link = view.said.linkAt(row, column); !link.empty())
        tasks_.openLink(link);
    else if (view.steps)
        view.steps->press(row, column);
}

void RoomLayer::pressPeople(const MouseStroke& stroke) {
    const std::string name = view.peoplePane.nameAt(stroke.row);
    if (name.empty())
        return;
    if (stroke.button == MouseStroke::Button::left && stroke.isSecond)
        tasks_.talkTo(name);
    if (stroke.button != MouseStroke::Button::right)
        return;
    const std::vector<MenuEntry> entries = tasks_.menuOf(name);
    if (!entries.empty())
        tasks_.popUp({.name = name, .entries = [entries] { return entries; }},
                     {stroke.row, stroke.column});
}

void RoomLayer::goTo(const Conversation* conversation) {
    if (conversation)
        tasks_.go(std::string(conversation->place()));
}

void RoomLayer::showMenus() {
    tasks_.openMenus(view.layout().title.top);
}

// For whoever has no mouse, as the people.
void RoomLayer::showLinks() {
    const Area& said = view.layout().said;
    tasks_.popUp(linksMenu(conversations_.front(), tasks_.openLink), {said.top, said.left});
}

void RoomLayer::showPeople() {
    std::vector<MenuEntry> entries;
    for (const auto& [name, rank] : view.people())
        if (auto about = tasks_.menuOf(name); !about.empty())
            entries.push_back({.name = name,
                               .caption = rank + visibleName(name),
                               .children = std::move(about),
                               .isSubmenu = true});
    if (entries.empty())
        entries.push_back({.name = "none",
                           .caption = view.people().size() > 1
                                          ? "they have no menus here: type 'x NAME, 'ban NAME"
                                          : "nobody else is here"});
    const Area& said = view.layout().said;
    tasks_.popUp({.name = "people", .entries = [entries] { return entries; }},
                 {said.top, said.right() - 1});
}

} // namespace larkspin
