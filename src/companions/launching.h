// The port to the system's way of starting things. What is started goes its own way: it outlives
// larkspin, and what becomes of it is never heard of. Nothing waits for it, nothing throws.
#pragma once

#include <string>

namespace larkspin {

class Launching {
public:
    virtual ~Launching() = default;

    // Runs the program of that drive path, without arguments. False when it can't be started.
    virtual bool run(const std::string& path) = 0;

    // Opens a drive path or an address (`http://…`) in whatever the system has for it; what can be
    // executed is run. False when nothing was there to be asked; whether it could do something with
    // the path is not told.
    virtual bool open(const std::string& pathOrAddress) = 0;
};

} // namespace larkspin
