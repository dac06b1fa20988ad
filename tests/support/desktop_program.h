// The desktop program as a child process, on a display of its own, with a home of its own; without
// a sound device, and without a bus unless the test has one.
#pragma once

#include "support/child.h"
#include "support/patience.h"
#include "support/temp_directory.h"
#include "support/x_server.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace larkspin {

class DesktopProgram : public testing::Test {
protected:
    // With its errors in its output.
    std::unique_ptr<Child> start(const std::string& display) const;
    // Past the box that welcomes him the first time.
    std::unique_ptr<Child> welcomed() const;

    bool isSeen(const std::string& title) const {
        return server->hand({"search", "--onlyvisible", "--name", title});
    }
    bool sees(const std::string& title) const {
        return comes([&] { return isSeen(title); });
    }
    // Without a window manager, which window has the keyboard last is a matter of luck.
    void turnTo(const std::string& title) const;
    void press(std::initializer_list<const char*> keys) const;
    bool hasSaved(const std::string& setting = "\nvolume=50") const {
        return disk.read("larkspin/larkspin.ini").find(setting) != std::string::npos;
    }

    TempDirectory disk;
    std::string bus = "unix:path=/nonexistent"; // the session's
    std::vector<std::string> also;              // further variables
    std::unique_ptr<XServer> server = std::make_unique<XServer>();
};

} // namespace larkspin
