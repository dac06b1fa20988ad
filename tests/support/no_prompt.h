// For rooms that ask for no password.
#pragma once

#include "irc/client/password_prompt.h"

namespace larkspin {

struct NoPrompt : PasswordPrompt {
    void ask(const std::string&, std::function<void(std::string)>) override {}
    void dismiss() override {}
};

} // namespace larkspin
