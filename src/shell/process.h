// The program's own process, as far as the program cares about it.
#pragma once

namespace larkspin {

class Process {
public:
    virtual ~Process() = default;

    // Claims the place of the one running copy. False when another copy holds it; true also
    // when this process holds it already.
    virtual bool claimOnlyCopy() = 0;

    // Ends the process, also from inside a wait: the calls above are not returned to.
    [[noreturn]] virtual void end() = 0;
};

} // namespace larkspin
