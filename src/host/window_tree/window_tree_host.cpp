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

#include <algorithm>

namespace larkspin {

namespace {

// Seconds in which the client puts its clock's notice away.
constexpr double afterNotice = 0.5;

// The name stands between the greeting and its exclamation mark.
std::string greetedIn(const std::string& greeting) {
    const std::size_t start = std::string_view(window::welcome).size();
    return greeting.substr(start, greeting.find('!') - start);
}

} // namespace

// Others write what a caption tells, as of a letter that is open. Where two greet different people
// nobody knows which of them is the client's own.
std::string WindowTreeHost::currentScreenName() {
    const std::vector<std::string> greetings = windows_.greetings();
    const std::string name = greetings.empty() ? "" : greetedIn(greetings.front());
    const bool isOne = std::ranges::all_of(
        greetings, [&](const std::string& each) { return greetedIn(each) == name; });
    return isOne ? name : "";
}

void WindowTreeHost::hideWelcomeWindow() {
    const std::string greeting = window::welcome + currentScreenName() + "!";
    HostHandle found = windows_.childCalled(greeting + " ");
    if (found == noHandle)
        found = windows_.childCalled(greeting);
    showHostWindow(found, ShowCommand::hide);
}

void WindowTreeHost::setRoomInput(HostHandle input, const std::string& text) {
    ++inputsSet_;
    lastSet_ = toSingleByte(text);
    calls_.sendText(input, window::setText, lastSet_);
}

void WindowTreeHost::sendChatLine(const std::string& line) {
    if (const HostHandle input = windows_.room().input)
        sayBy(input, line, [] { return true; });
}

bool WindowTreeHost::sendChatLineIn(HostHandle room, const std::string& caption,
                                    const std::string& line, const Still& isSameRoom) {
    const ClientRoom now = windows_.room();
    return now.window == room && now.caption == caption && now.input != noHandle &&
           sayBy(now.input, line, isSameRoom);
}

// In the turn of the events another line may have been said, or the input line been cleared: this
// one is then written anew, so that it isn't lost. Nor is what the owner has begun to type there,
// unless he has it cleared.
bool WindowTreeHost::sayBy(HostHandle input, const std::string& line, const Still& isSameRoom) {
    const std::string begun = calls_.text(input);
    const std::string lastSet = lastSet_; // if the client hasn't taken it, it still stands there
    const unsigned clearings = clearings_;
    setRoomInput(input, line);
    const unsigned asOf = inputsSet_;
    loop_.serveTurn();
    const bool isSaid = isSameRoom();
    if (inputsSet_ != asOf || !isSaid)
        setRoomInput(input, isSaid ? line : "");
    if (isSaid)
        calls_.send(input, window::character, window::returnKey, 0);
    const bool isOwners = !begun.empty() && begun != lastSet;
    if (!isOwners || clearings_ != clearings)
        return isSaid;
    calls_.sendText(input, window::setText, begun);
    calls_.send(input, window::setSelection, begun.size(), static_cast<std::int64_t>(begun.size()));
    return isSaid;
}

void WindowTreeHost::clearChatInput() {
    if (const HostHandle input = windows_.room().input)
        setRoomInput(input, "");
    ++clearings_;
}

HostHandle WindowTreeHost::peopleList() {
    return windows_.room().people;
}

HostHandle WindowTreeHost::ejectedList() {
    return windows_.ejectedList(findChatRoom());
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

// Each time round the first button comes last.
HostHandle WindowTreeHost::findRoomIcon(const std::string& pattern) {
    return waitForHost(loop_, [&]() -> std::optional<HostHandle> {
        const HostHandle room = findChatRoom();
        if (room == noHandle)
            return noHandle;
        FoundWindows icons = windows_.all(room, window::icon, WindowWalk::Tells::text);
        if (!icons.empty())
            std::rotate(icons.begin(), icons.begin() + 1, icons.end());
        for (const FoundWindow& icon : icons)
            if (fits(icon.text, pattern))
                return icon.window;
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
    const std::string text = statics(notice).first.value_or("");
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
    return windows_.text(control);
}

HostHandle WindowTreeHost::modalWindow() {
    return windows_.top(window::modal);
}

HostHandle WindowTreeHost::downloadWindow() {
    return windows_.download();
}

WindowTreeHost::Statics WindowTreeHost::statics(HostHandle window) {
    const FoundWindows found = windows_.all(window, window::label, WindowWalk::Tells::text);
    Statics texts;
    if (!found.empty())
        texts.first = found[0].text;
    if (found.size() > 1)
        texts.second = found[1].text;
    return texts;
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
    const auto isNotice = [](const FoundWindow& each) {
        return each.text == window::clientCaption && each.holdsFirst(2);
    };
    return waitForHost(loop_, [&]() -> std::optional<HostHandle> {
        const HostHandle notice = windows_.child(isNotice, {window::icon, window::label}).window;
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
