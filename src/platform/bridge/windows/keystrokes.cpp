#include "platform/bridge/windows/keystrokes.h"

#include "platform/bridge/windows/windows_api.h"

#include <cctype>
#include <vector>

namespace larkspin::bridge {

namespace {

constexpr std::size_t mostKeys = 1000;

struct Held {
    bool shift = false, control = false, alt = false;
    bool any() const { return shift || control || alt; }
};

class Strokes {
public:
    void strike(WORD key, const Held& held) {
        hold(held, 0);
        add(key, 0);
        add(key, KEYEVENTF_KEYUP);
        hold(held, KEYEVENTF_KEYUP);
    }
    // At once, so that nothing that the owner types gets in between.
    void send() {
        SendInput(static_cast<UINT>(inputs_.size()), inputs_.data(), int{sizeof(INPUT)});
    }

private:
    void hold(const Held& held, DWORD flags) {
        if (held.shift)
            add(VK_SHIFT, flags);
        if (held.control)
            add(VK_CONTROL, flags);
        if (held.alt)
            add(VK_MENU, flags);
    }
    void add(WORD key, DWORD flags) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
        input.ki.dwFlags = flags;
        inputs_.push_back(input);
    }

    std::vector<INPUT> inputs_;
};

// A letter with something held is that key, whether it is written small or not.
char keyFor(char character, const Held& held) {
    const auto byte = static_cast<unsigned char>(character);
    return held.any() && byte < 0x80 ? static_cast<char>(std::tolower(byte)) : character;
}

} // namespace

void strike(const std::string& keys) {
    Strokes strokes;
    Held held;
    for (const char character : keys.substr(0, mostKeys)) {
        if (character == '^' || character == '%') {
            (character == '^' ? held.control : held.alt) = true;
            continue;
        }
        const SHORT found = VkKeyScanA(keyFor(character, held));
        if (found != -1) {
            held.shift = held.shift || (found & 0x100) != 0;
            held.control = held.control || (found & 0x200) != 0;
            held.alt = held.alt || (found & 0x400) != 0;
            strokes.strike(static_cast<WORD>(found & 0xFF), held);
        }
        held = {};
    }
    strokes.send();
}

} // namespace larkspin::bridge
