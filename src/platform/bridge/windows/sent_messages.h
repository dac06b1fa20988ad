// Messages to windows of other processes, none of which is waited for longer than a moment. A
// process that has let one go unanswered isn't asked again for a while, so that a client that hangs
// costs one moment in that while, and not one for each message.
#pragma once

#include "platform/bridge/windows/deadline.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin::bridge {

class SentMessages {
public:
    // What the window answers; nothing when it doesn't, or isn't there.
    std::optional<LRESULT> send(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                const Deadline& deadline);

    // The length that the window claims its text to have.
    std::optional<std::size_t> textLength(HWND window, const Deadline& deadline);

    // The text itself, no more than so many bytes. It stands until the next one is read.
    std::optional<std::string_view> text(HWND window, std::size_t most, const Deadline& deadline);

private:
    bool isSilent(DWORD process);

    std::map<DWORD, ULONGLONG> silent_; // until when they aren't asked
    std::string text_;
};

} // namespace larkspin::bridge
