// Starting programs and opening documents on a POSIX system with the freedesktop tools.
//
// What is started gets the owner's variables, no open files, clean signals and a session of its
// own, and is nobody's child. A program starts in its own directory, the desktop's opener in that
// of larkspin's program: neither keeps the directory in use from which larkspin was called.
//
// What can't be executed as it is and names a program of another system is given to `wine`,
// documents and addresses are given to `xdg-open`: each looked for on the PATH, and never through
// a shell.
#pragma once

#include "companions/launching.h"

namespace larkspin {

class PosixLaunching : public Launching {
public:
    bool run(const std::string& path) override;
    bool open(const std::string& pathOrAddress) override;
};

} // namespace larkspin
