// The port to a line that the owner types without its being shown, or kept among the typed lines.
#pragma once

#include <functional>
#include <string>

namespace larkspin {

class PasswordPrompt {
public:
    virtual ~PasswordPrompt() = default;

    // Takes the line that he types next, in an event of its own; blank where he wants to say none.
    // It returns at once, and takes the place of one that has been asked for before.
    virtual void ask(const std::string& prompt,
                     std::function<void(std::string password)> answered) = 0;

    // Takes nothing any more.
    virtual void dismiss() = 0;
};

} // namespace larkspin
