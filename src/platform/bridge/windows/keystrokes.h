// Keystrokes for the window that has the focus.
#pragma once

#include <string>

namespace larkspin::bridge {

// "^" holds Ctrl and "%" holds Alt for the next key. A character without a key is left out.
void strike(const std::string& keys);

} // namespace larkspin::bridge
