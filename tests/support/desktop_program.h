// The desktop program as a child process, on a display of its own, with a home of its own; without
// a sound device, and without a bus unless the test has one.
#pragma once

#include "support/temp_directory.h"
#include "support/x_server.h"

#include <gtest/gtest.h>
#include <initializer_list>

namespace larkspin {

class DesktopProgram : public testing::Test {
protected:
    // With its errors in its output, and perhaps with files.
    std::unique_ptr<Child> start(const std::string& display, const std::string& words = "") const {
        const std::string home = disk.path().native();
        std::vector<std::string> variables = ownHome(home);
        for (const std::string& more :
             {"XDG_CONFIG_HOME=" + home, "DBUS_SESSION_BUS_ADDRESS=" + bus, "DISPLAY=" + display,
              std::string("WAYLAND_DISPLAY="), std::string("QT_QPA_PLATFORM="),
              std::string("QT_QPA_PLATFORMTHEME=")})
            variables.push_back(more);
        variables.insert(variables.end(), also.begin(), also.end());
        return Child::start("sh", variables,
                            {"-c", "exec " LARKSPIN_DESKTOP " " + words + " 2>&1"});
    }
    // Past the box that welcomes him the first time.
    std::unique_ptr<Child> welcomed() const {
        auto child = start(server->display());
        turnTo("^larkspin$");
        press({"Return"});
        return child;
    }

    bool isSeen(const std::string& title) const {
        return server->hand({"search", "--onlyvisible", "--name", title});
    }
    bool sees(const std::string& title) const {
        return comes([&] { return isSeen(title); });
    }
    // Without a window manager, which window has the keyboard last is a matter of luck.
    void turnTo(const std::string& title) const {
        EXPECT_TRUE(sees(title));
        EXPECT_TRUE(server->hand(
            {"search", "--onlyvisible", "--name", title, "windowfocus", "--sync", "%1"}));
    }
    void press(std::initializer_list<const char*> keys) const {
        std::vector<std::string> does = {"key"};
        does.insert(does.end(), keys.begin(), keys.end());
        EXPECT_TRUE(server->hand(does));
    }
    bool hasSaved(const std::string& setting = "\nvolume=50") const {
        return disk.read("larkspin/larkspin.ini").find(setting) != std::string::npos;
    }

    TempDirectory disk;
    std::string bus = "unix:path=/nonexistent"; // the session's
    std::vector<std::string> also;              // further variables
    std::unique_ptr<XServer> server = std::make_unique<XServer>();
};

} // namespace larkspin
