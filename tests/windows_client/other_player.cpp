#include "other_player.h"

#include "told.h"

#include <utility>

namespace larkspin::client {

void OtherPlayer::show(const std::string& caption) {
    if (caption.empty()) {
        takeAway(std::exchange(window_, nullptr));
        return;
    }
    if (window_ == nullptr)
        window_ = topWindow("Winamp v1.x", caption, {500, 570, 300, 80},
                            [](const Message& message) -> Answer {
                                if (message.number != WM_COMMAND)
                                    return std::nullopt;
                                tell("command", std::to_string(message.wParam));
                                return 0;
                            });
    SetWindowTextA(window_, caption.c_str());
}

} // namespace larkspin::client
