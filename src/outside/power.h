// The port to the machine's power. Where the system refuses, nothing happens and nothing is told:
// nobody is asked for a password. Nothing waits, nothing throws.
#pragma once

namespace larkspin {

class Power {
public:
    virtual ~Power() = default;

    virtual void restart() = 0;
    virtual void shutDown() = 0;
};

} // namespace larkspin
