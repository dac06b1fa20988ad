#include "host/window_tree/window_tree_host.h"

#include "host/client_addresses.h"
#include "host/window_tree/host_bytes.h"
#include "host/window_tree/host_rows.h"
#include "host/window_tree/host_wait.h"
#include "host/window_tree/window_presses.h"
#include "host/window_tree/window_texts.h"
#include "shell/pause.h"
#include "text/parts.h"
#include "text/row_list.h"
#include "text/wildcard.h"

namespace larkspin {

namespace {

// How many buttons are looked at between two turns of the events.
constexpr int stepsInPass = 17;

// Seconds in which the client puts its clock's notice away.
constexpr double afterNotice = 0.5;

} // namespace

// The name stands between the greeting and its exclamation mark.
std::string WindowTreeHost::currentScreenName() {
    std::string greeting;
    windows_.child([&](HostHandle window) {
        greeting = windows_.caption(window);
        return greeting.starts_with(window::welcome);
    });
    if (!greeting.starts_with(window::welcome))
        return {};
    const std::size_t start = std::string_view(window::welcome).size();
    return greeting.substr(start, greeting.find('!') - start);
}

void WindowTreeHost::hideWelcomeWindow() {
    const std::string greeting = window::welcome + currentScreenName() + "!";
    HostHandle found = windows_.childCalled(greeting + " ");
    if (found == noHandle)
        found = windows_.childCalled(greeting);
    showHostWindow(found, ShowCommand::hide);
}

HostHandle WindowTreeHost::roomInput() const {
    return windows_.first(windows_.room(), window::input);
}

void WindowTreeHost::setRoomInput(HostHandle input, const std::string& text) {
    ++inputsSet_;
    calls_.sendText(input, window::setText, toSingleByte(text));
}

// In the turn of the events another line may have been said, or the input line been cleared: this
// one is then written anew, so that it isn't lost.
void WindowTreeHost::sendChatLine(const std::string& line) {
    const HostHandle input = roomInput();
    if (input == noHandle)
        return;
    setRoomInput(input, line);
    const unsigned asOf = inputsSet_;
    loop_.serveTurn();
    if (inputsSet_ != asOf)
        setRoomInput(input, line);
    calls_.send(input, window::character, window::returnKey, 0);
}

void WindowTreeHost::clearChatInput() {
    if (const HostHandle input = roomInput())
        setRoomInput(input, "");
}

HostHandle WindowTreeHost::peopleList() {
    return windows_.first(windows_.room(), window::listbox);
}

HostHandle WindowTreeHost::ejectedList() {
    const HostHandle room = windows_.room();
    const HostHandle people = windows_.first(room, window::listbox);
    return people == noHandle ? noHandle : windows_.next(room, people, window::listbox);
}

void WindowTreeHost::readHostList(HostHandle list, RowList& names, bool includeSelf) {
    const std::string self = includeSelf ? std::string() : currentScreenName();
    for (const std::string& name : readHostRows(calls_, list))
        if (includeSelf || name != self)
            names.add(name);
}

void WindowTreeHost::selectHostRow(HostHandle list, int row) {
    if (row >= 0)
        calls_.send(list, window::setCurrentRow, static_cast<unsigned>(row), 0);
}

// Goes round and round through the room's buttons; after the last one comes none, and then the
// first again.
HostHandle WindowTreeHost::findRoomIcon(const std::string& pattern) {
    HostHandle icon = firstIcon(windows_.room());
    return waitForHost(loop_, [&]() -> std::optional<HostHandle> {
        const HostHandle room = windows_.room();
        if (room == noHandle)
            return noHandle;
        for (int step = 0; step < stepsInPass; ++step) {
            icon = windows_.next(room, icon, window::icon);
            if (icon != noHandle && fits(controlText(icon), pattern))
                return icon;
        }
        return std::nullopt;
    });
}

bool WindowTreeHost::iconVisible(HostHandle icon) {
    return calls_.visible(icon) == 1;
}

void WindowTreeHost::pressIcon(HostHandle icon) {
    holdIcon(icon);
    releaseIcon(icon);
}

void WindowTreeHost::holdIcon(HostHandle icon) {
    holdButton(calls_, icon);
}

void WindowTreeHost::releaseIcon(HostHandle icon) {
    releaseButton(calls_, icon);
}

void WindowTreeHost::pressByKey(HostHandle icon) {
    postKeyPress(calls_, icon);
}

bool WindowTreeHost::enterKeyword(const std::string& keyword) {
    const HostHandle edit = windows_.keywordBox();
    if (edit == noHandle)
        return false;
    calls_.sendText(edit, window::setText, toSingleByte(keyword));
    calls_.send(edit, window::character, window::spaceKey, 0);
    calls_.send(edit, window::character, window::returnKey, 0);
    return true;
}

void WindowTreeHost::gotoKeyword(const std::string& keyword) {
    enterKeyword(keyword);
}

void WindowTreeHost::enterPrivateRoom(const std::string& name) {
    gotoKeyword(std::string(privateRoomAddress) + name);
}

void WindowTreeHost::openMail(Mail mail) {
    sendHostKeys(mail == Mail::unread ? window::unreadMailKeys
                 : mail == Mail::old  ? window::oldMailKeys
                                      : window::sentMailKeys);
}

void WindowTreeHost::signOff() {
    sendHostKeys(window::signOffKeys);
}

void WindowTreeHost::takePrivateMessages(bool areTaken) {
    sendInstantMessage(areTaken ? window::messagesOn : window::messagesOff, window::switchBody);
}

std::optional<std::string> WindowTreeHost::timeOnline() {
    gotoKeyword(window::onlineClock);
    const HostHandle notice = waitForClockNotice();
    if (notice == noHandle)
        return std::nullopt;
    const std::string text = controlText(statics(notice).first);
    pressByKey(firstIcon(notice));
    Pause{loop_}(afterNotice);
    return timeOnlineIn(text);
}

void WindowTreeHost::sendInstantMessage(const std::string& addressee, const std::string& body) {
    messages_.send(addressee, body);
}

// The window is named by its caption, since that is how a window is brought forward.
void WindowTreeHost::bringHostForward() {
    const std::string caption = calls_.caption(hostFrame());
    if (!caption.empty())
        calls_.activate(caption);
}

void WindowTreeHost::closeHost() {
    if (const HostHandle frame = hostFrame())
        calls_.post(frame, window::close, 0, 0);
}

// If there is no client, the keys would only be struck in some other program.
void WindowTreeHost::sendHostKeys(const std::string& keys) {
    if (hostFrame() != noHandle)
        calls_.sendKeys(toSingleByte(keys));
}

std::string WindowTreeHost::windowCaption(HostHandle window) {
    return windows_.caption(window);
}

std::string WindowTreeHost::controlText(HostHandle control) {
    return control == noHandle ? std::string() : windows_.text(control);
}

HostHandle WindowTreeHost::modalWindow() {
    return calls_.findWindow(window::modal);
}

HostHandle WindowTreeHost::downloadWindow() {
    return windows_.download();
}

WindowTreeHost::Statics WindowTreeHost::statics(HostHandle window) {
    Statics found;
    found.first = windows_.first(window, window::label);
    if (found.first != noHandle)
        found.second = windows_.next(window, found.first, window::label);
    return found;
}

HostHandle WindowTreeHost::firstIcon(HostHandle window) {
    return windows_.first(window, window::icon);
}

void WindowTreeHost::showHostWindow(HostHandle window, ShowCommand command) {
    if (window != noHandle)
        calls_.show(window, static_cast<int>(command));
}

// If the client's frame is gone, no notice will come.
HostHandle WindowTreeHost::waitForClockNotice() {
    return waitForHost(loop_, [this]() -> std::optional<HostHandle> {
        const HostHandle notice = windows_.child([this](HostHandle window) {
            return windows_.caption(window) == window::clientCaption &&
                   firstIcon(window) != noHandle && statics(window).first != noHandle;
        });
        if (notice == noHandle && hostFrame() != noHandle)
            return std::nullopt;
        return notice;
    });
}

std::string WindowTreeHost::messengerAccount() {
    const auto value = calls_.registryValue(window::messengerKey, window::messengerValue);
    if (!value)
        return {};
    if (value->type == window::binaryValue)
        return std::to_string(littleEndian(value->bytes.substr(0, 4)));
    return fromSingleByte(partedAt(value->bytes, '\0').head);
}

} // namespace larkspin
