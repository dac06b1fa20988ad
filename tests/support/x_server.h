// An X display of a test's own, and a hand at its mouse and keyboard.
#pragma once

#include "support/child.h"

namespace larkspin {

class XServer {
public:
    XServer();
    ~XServer() { kill(); }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    const std::string& display() const { return display_; }
    void kill();

    // Whether xdotool did all of this. What it waits for may not come: it is given up then.
    bool hand(const std::vector<std::string>& does) const;

private:
    std::unique_ptr<Child> process_;
    std::string display_; // ":1"
};

} // namespace larkspin
