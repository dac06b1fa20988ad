#include "host/window_tree/instant_messages.h"

#include "host/window_tree/host_bytes.h"
#include "host/window_tree/host_wait.h"
#include "host/window_tree/host_windows.h"
#include "host/window_tree/window_presses.h"

#include <algorithm>

namespace larkspin {

namespace {

// The tenth button of a message window sends.
constexpr std::size_t stepsToSend = 9;

// Forgets what is left however the sending ends: the program may end inside a wait.
template <typename Queue> class EmptiedAtEnd {
public:
    explicit EmptiedAtEnd(Queue& queue) : queue_(queue) {}
    ~EmptiedAtEnd() { queue_.clear(); }
    EmptiedAtEnd(const EmptiedAtEnd&) = delete;

private:
    Queue& queue_;
};

} // namespace

void InstantMessages::send(const std::string& addressee, const std::string& body) {
    if (messages_.size() > mostWaiting)
        return;
    messages_.push_back({addressee, body});
    if (messages_.size() > 1)
        return;
    const EmptiedAtEnd emptied(messages_);
    for (; !messages_.empty(); messages_.pop_front())
        sendFirst();
}

void InstantMessages::sendFirst() {
    const Message message = messages_.front();
    // The windows that are open already are noted, to know the new one from them.
    const Handles others = openWindows();
    if (!open_(window::instantMessageAddress + message.addressee))
        return;
    const HostHandle window = waitForWindow(others);
    if (window == noHandle)
        return;
    fillIn(window, message.body);
    answerClient(window);
}

InstantMessages::Handles InstantMessages::openWindows() const {
    Handles found;
    for (const FoundWindow& each : windows_.children())
        if (each.text == window::instantMessageCaption)
            found.push_back(each.window);
    return found;
}

// If the client's frame is gone, no window will come.
HostHandle InstantMessages::waitForWindow(const Handles& others) const {
    const auto isReady = [&](const FoundWindow& each) {
        return std::ranges::find(others, each.window) == others.end() &&
               each.text == window::instantMessageCaption && each.holdsFirst(1) &&
               sendButton(each.window) != noHandle;
    };
    return waitForHost(loop_, [&]() -> std::optional<HostHandle> {
        const HostHandle window = windows_.child(isReady, {window::input}).window;
        if (window == noHandle && windows_.frame() != noHandle)
            return std::nullopt;
        return window;
    });
}

HostHandle InstantMessages::sendButton(HostHandle window) const {
    const FoundWindows icons = windows_.all(window, window::icon);
    return icons.size() <= stepsToSend ? noHandle : icons[stepsToSend].window;
}

void InstantMessages::fillIn(HostHandle window, const std::string& body) const {
    calls_.sendText(windows_.first(window, window::input), window::setText, toSingleByte(body));
    const HostHandle button = sendButton(window);
    holdButton(calls_, button);
    releaseButton(calls_, button);
}

// Waits until the window has gone by itself, or the client has put a box in front of it.
void InstantMessages::answerClient(HostHandle window) const {
    const HostHandle box = waitForHost(loop_, [&]() -> std::optional<HostHandle> {
        const HostHandle shown = calls_.findWindow(window::messageBox, window::clientCaption);
        const bool isGone =
            windows_.child([&](const FoundWindow& each) { return each.window == window; }).window ==
            noHandle;
        if (shown == noHandle && !isGone)
            return std::nullopt;
        return shown;
    });
    if (box == noHandle)
        return;
    postKeyPress(calls_, windows_.first(box, window::button));
    calls_.post(window, window::close, 0, 0);
}

} // namespace larkspin
