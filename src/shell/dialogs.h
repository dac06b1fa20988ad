// The port to what stops in front of the owner himself rather than in the room: boxes.
// Each call returns when the owner has seen or answered it; a front end that can't wait for
// a look returns at once.
#pragma once

#include <string>

namespace larkspin {

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // Information icon, one OK button, the program's name as title.
    virtual void box(const std::string& text) = 0;

    // The same with a stop icon.
    virtual void stopBox(const std::string& text) = 0;

    // Yes and No buttons; true for Yes. No answer at all counts as No.
    virtual bool ask(const std::string& question) = 0;
};

} // namespace larkspin
