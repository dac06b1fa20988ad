#include "icon.h"

#include <utility>

namespace larkspin::client {

HWND icon(HWND parent, const std::string& caption, const Place& place, Pressed pressed,
          const char* className) {
    bool isHeld = false;
    return childWindow(parent, className, caption, place,
                       [isHeld, caption, pressed](const Message& message) mutable -> Answer {
                           const bool isSpace = message.wParam == VK_SPACE;
                           if (message.number == WM_LBUTTONDOWN ||
                               (message.number == WM_KEYDOWN && isSpace)) {
                               isHeld = true;
                               return 0;
                           }
                           const bool isUp = (message.number == WM_KEYUP && isSpace) ||
                                             message.number == WM_LBUTTONUP; // a hand's
                           if (!isUp || !std::exchange(isHeld, false))
                               return std::nullopt;
                           const auto act = pressed; // the window may go with it
                           const std::string name = caption;
                           act(name);
                           return 0;
                       });
}

void icons(HWND parent, const std::vector<std::string>& captions, Place place, Pressed pressed) {
    for (const std::string& caption : captions) {
        icon(parent, caption, place, pressed);
        place.x += place.width + 2;
    }
}

} // namespace larkspin::client
