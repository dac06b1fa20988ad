#include "platform/bridge/windows/sent_messages.h"

namespace larkspin::bridge {

namespace {

constexpr unsigned longestWait = 200;       // milliseconds for an answer
constexpr ULONGLONG longestSulk = 2000;     // milliseconds in which no other is asked for
constexpr std::size_t keptText = 1'000'000; // bytes of memory that are kept for the next text

DWORD processOf(HWND window) {
    DWORD process = 0;
    return GetWindowThreadProcessId(window, &process) != 0 ? process : 0;
}

} // namespace

bool SentMessages::isSilent(DWORD process) {
    std::erase_if(silent_,
                  [now = GetTickCount64()](const auto& each) { return each.second < now; });
    return silent_.contains(process);
}

std::optional<LRESULT> SentMessages::send(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                          const Deadline& deadline) {
    // What stands for all windows at once has no process either.
    const DWORD process = processOf(window);
    const unsigned wait = std::min(longestWait, deadline.left());
    if (process == 0 || wait == 0 || isSilent(process))
        return std::nullopt;
    // In its other form Wine counts a text by asking for all of it, and waits for it forever.
    const auto ask = message == WM_GETTEXTLENGTH ? SendMessageTimeoutW : SendMessageTimeoutA;
    DWORD_PTR answer = 0;
    const ULONGLONG asked = GetTickCount64();
    if (ask(window, message, wParam, lParam, SMTO_ABORTIFHUNG, wait, &answer) != 0)
        return static_cast<LRESULT>(answer);
    // Systems tell different errors when time is up; and one that was known to hang costs nothing.
    if (const ULONGLONG now = GetTickCount64(); now - asked >= longestWait / 2)
        silent_[process] = now + longestSulk;
    return std::nullopt;
}

// Of characters, of which each is a byte.
std::optional<std::size_t> SentMessages::textLength(HWND window, const Deadline& deadline) {
    const auto answer = send(window, WM_GETTEXTLENGTH, 0, 0, deadline);
    if (!answer)
        return std::nullopt;
    return static_cast<std::size_t>(std::max<LRESULT>(*answer, 0));
}

std::optional<std::string_view> SentMessages::text(HWND window, std::size_t most,
                                                   const Deadline& deadline) {
    if (text_.size() <= most || text_.size() > std::max(most, keptText) + 1)
        text_ = std::string(most + 1, '\0');
    text_.front() = '\0';
    const auto answer =
        send(window, WM_GETTEXT, most + 1, reinterpret_cast<LPARAM>(text_.data()), deadline);
    if (!answer)
        return std::nullopt;
    // Neither what was claimed before nor what is now is believed.
    const auto claimed = static_cast<std::size_t>(std::max<LRESULT>(*answer, 0));
    const std::string_view got = std::string_view(text_).substr(0, std::min(claimed, most));
    return got.substr(0, got.find('\0'));
}

} // namespace larkspin::bridge
