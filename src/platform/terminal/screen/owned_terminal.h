// The terminal as a device: whether it is ours now, its size, and its mode, in which each key comes
// at once and none is a signal. While it is taken, what libraries have to say on the error output
// goes nowhere: it would stand in the middle of the picture.
#pragma once

#include "platform/posix/descriptor.h"

#include <memory>
#include <string>

struct termios;

namespace larkspin {

struct TerminalSize {
    int rows, columns;

    bool operator==(const TerminalSize&) const = default;
};

class OwnedTerminal {
public:
    OwnedTerminal();
    ~OwnedTerminal();
    OwnedTerminal(const OwnedTerminal&) = delete;
    OwnedTerminal& operator=(const OwnedTerminal&) = delete;

    // The system stops whoever reads from it, or changes its mode, while another job has it.
    bool isOurs() const;

    // At least 1 × 1, and within reason.
    TerminalSize size() const;

    // Keeps the mode in which it was found, and gives it back; in a crash, too, with these bytes,
    // which bring back what it showed.
    void take(const std::string& bytesInCrash);
    void giveBack();

private:
    void silenceErrors();
    void restore() const;
    void restoreInCrash() const;

    std::unique_ptr<termios> found_; // while it is taken
    Descriptor errors_;              // where they went, meanwhile
    std::string bytesInCrash_;
};

} // namespace larkspin
