#include "client.h"

#include "icon.h"
#include "told.h"

#include <utility>

namespace larkspin::client {

namespace {

constexpr UINT_PTR arrival = 1;   // the timer
constexpr UINT untilArrival = 50; // milliseconds from a keyword to its window
constexpr char toMessage[] = "aol://9293:";

std::string trimmed(const std::string& text) {
    const std::size_t from = text.find_first_not_of(' ');
    return from == std::string::npos ? ""
                                     : text.substr(from, text.find_last_not_of(' ') - from + 1);
}

void labels(HWND parent, const Client::Texts& texts) {
    int y = 4;
    for (const std::string& text : texts) {
        childWindow(parent, "_AOL_Static", text, {4, y, 300, 20});
        y += 22;
    }
}

// A key, as it was held; "" for those that only hold.
std::string keyOf(const Message& message) {
    const bool isAlt = message.number == WM_SYSKEYDOWN;
    const WPARAM key = message.wParam;
    if ((message.number != WM_KEYDOWN && !isAlt) || key == VK_MENU || key == VK_CONTROL ||
        key == VK_SHIFT)
        return {};
    const std::string held = isAlt ? "%" : GetKeyState(VK_CONTROL) < 0 ? "^" : "";
    return held + static_cast<char>(MapVirtualKeyA(static_cast<UINT>(key), MAPVK_VK_TO_CHAR));
}

} // namespace

void Client::open() {
    frame_ = topWindow("AOL Frame25", "America  Online", {0, 0, 860, 560},
                       [this](const Message& message) { return answerFrame(message); });
    const HWND toolbar = childWindow(frame_, "AOL Toolbar", "", {0, 0, 850, 34});
    const HWND strip = childWindow(toolbar, "_AOL_Toolbar", "", {0, 0, 850, 34});
    const HWND box = childWindow(strip, "_AOL_Combobox", "", {300, 4, 400, 26});
    inputLine(box, "Edit", {0, 0, 400, 26}, [this](const std::string& text) { go(text); });
    area_ = childWindow(frame_, "MDIClient", "", {0, 36, 850, 490}, {}, WS_CLIPCHILDREN);
    SetFocus(frame_);
}

Answer Client::answerFrame(const Message& message) {
    const std::string key = keyOf(message);
    if (!key.empty()) {
        tell("key", key);
        return 0;
    }
    switch (message.number) {
    case WM_SYSCHAR: // of keys that were told
    case WM_CHAR:
        return 0;
    case WM_TIMER:
        arrive();
        return 0;
    case WM_CLOSE:
        tell("closed", textOf(message.window));
        takeAway(message.window);
        ended_();
        return 0;
    default:
        return answerChild(message);
    }
}

Answer Client::answerChild(const Message& message) {
    if (message.number == WM_SHOWWINDOW && message.wParam == 0 && message.lParam == 0 &&
        !isGoing(message.window))
        tell("hidden", textOf(message.window));
    if (message.number == WM_SIZE && message.wParam == SIZE_MINIMIZED)
        tell("minimised", textOf(message.window));
    if (message.number == WM_QUERYOPEN)
        tell("restored", textOf(message.window));
    if (message.number == WM_CLOSE) {
        tell("closed", textOf(message.window));
        takeAway(message.window);
        return 0;
    }
    return std::nullopt;
}

Handler Client::told() {
    return [this](const Message& message) { return answerChild(message); };
}

HWND Client::child(const std::string& caption, const Place& place) {
    return innerWindow(area_, "AOL Child", caption, place, told());
}

void Client::signOn(const std::string& screenName) {
    room.signOn(screenName);
    if (!screenName.empty())
        return greet("Welcome, " + screenName + "! ");
    takeAway(std::exchange(welcome_, nullptr));
}

void Client::greet(const std::string& caption) {
    takeAway(std::exchange(welcome_, nullptr));
    welcome_ = child(caption, {4, 4, 180, 60});
}

void Client::go(const std::string& place) {
    places_.push_back(trimmed(place));
    tell("keyword", places_.back());
    SetTimer(frame_, arrival, untilArrival, nullptr);
}

void Client::arrive() {
    KillTimer(frame_, arrival);
    for (const std::string& place : std::exchange(places_, {})) {
        if (opensWindows_ && place.starts_with(toMessage))
            openMessage(place.substr(sizeof toMessage - 1));
        else if (opensWindows_ && place == "online clock")
            openClock();
    }
}

void Client::openMessage(const std::string& addressee) {
    const HWND window = child("Send Instant Message", {20, 200, 420, 180});
    childWindow(window, "Edit", addressee, {4, 4, 400, 22});
    inputLine(window, "RICHCNTL", {4, 30, 400, 70}, [](const std::string&) {});
    icons(window, {"1", "2", "3", "4", "5", "6", "7", "8", "9", "Send"}, {4, 108, 38, 24},
          [this, window](const std::string& button) {
              if (button == "Send")
                  sendMessage(window);
          });
}

void Client::sendMessage(HWND window) {
    const std::string to = textOf(firstChild(window, "Edit"));
    tell("message", to + ": " + textOf(firstChild(window, "RICHCNTL")));
    if (to.starts_with("$"))
        openBox();
    else
        takeAway(window);
}

void Client::openBox() {
    const HWND box = topWindow("#32770", "America Online", {300, 250, 260, 110}, told());
    childWindow(box, "Static", "It is done.", {10, 8, 200, 20});
    icon(
        box, "OK", {80, 34, 80, 26},
        [box](const std::string&) {
            tell("pressed", "OK -1");
            takeAway(box);
        },
        "Button");
}

void Client::openClock() {
    const HWND notice = child("America Online", {240, 160, 330, 100});
    labels(notice, {clock_});
    icon(notice, "OK", {120, 40, 80, 26}, [notice](const std::string&) {
        tell("pressed", "OK -1");
        takeAway(notice);
    });
}

void Client::showModal(const std::string& caption, const Texts& texts) {
    takeAway(std::exchange(modal_, nullptr));
    if (caption.empty())
        return;
    modal_ = topWindow("_AOL_Modal", caption, {260, 180, 340, 130}, told());
    labels(modal_, texts);
    icon(modal_, "OK", {120, 60, 80, 26}, [this](const std::string&) {
        tell("pressed", "OK -1");
        takeAway(std::exchange(modal_, nullptr));
    });
}

void Client::showDownload(const std::string& caption, const Texts& texts) {
    takeAway(std::exchange(download_, nullptr));
    if (caption.empty())
        return;
    download_ = child(caption, {220, 140, 340, 160});
    childWindow(download_, "_AOL_Gauge", "", {4, 60, 300, 16});
    labels(download_, texts);
    icon(download_, "Finish Later", {4, 84, 100, 26},
         [](const std::string& button) { tell("pressed", button + " -1"); });
    childWindow(download_, "_AOL_Checkbox", "Sign off after it", {120, 84, 160, 24});
}

} // namespace larkspin::client
