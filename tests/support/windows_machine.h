// Wine on a display of its own with a window manager, and the client of plain windows in it, which
// is steered by lines (windows_client/main.cpp) and tells what is done to it.
#pragma once

#include "support/child.h"
#include "support/patience.h"
#include "support/temp_directory.h"
#include "support/x_server.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace larkspin {

// There is one, since its directory takes Wine seconds to make. Whatever this process runs runs on
// it.
class WindowsMachine {
public:
    static WindowsMachine& running() {
        static WindowsMachine machine;
        return machine;
    }
    ~WindowsMachine() {
        if (const auto boot = Child::start("wine", {}, {"wineboot", "-k"}))
            boot->ends(patience);
    }

    static std::unique_ptr<Child> client(const std::string& argument = {}) {
        return Child::start("wine", {}, {LARKSPIN_WINDOWS_CLIENT, argument});
    }

private:
    WindowsMachine() {
        std::signal(SIGPIPE, SIG_IGN); // clients end while they are told something
        ::setenv("DISPLAY", display_.display().c_str(), 1);
        ::setenv("HOME", disk_.path().c_str(), 1);
        ::setenv("WINEPREFIX", (disk_.path() / "wine").c_str(), 1);
        ::setenv("WINEDEBUG", "-all", 1);
        manager_ = Child::start("openbox", {}, {"--sm-disable"});
        const auto toMakeIt = 5 * patience;
        staying_ = client("player");
        EXPECT_TRUE(staying_->says("ready", toMakeIt)) << "no Wine runs: scripts/test windows";
    }

    TempDirectory disk_;
    XServer display_;
    std::unique_ptr<Child> manager_;
    std::unique_ptr<Child> staying_; // without any program Wine would begin anew for the next one
};

class WindowsClient {
public:
    WindowsClient() {
        WindowsMachine::running();
        process_ = WindowsMachine::client();
        EXPECT_TRUE(tells("ready"));
    }

    void tell(const std::string& line) { process_->tell(line); }
    // Whether it tells such a line. What it has told before is gone then.
    bool tells(std::string_view part) {
        for (std::string told = next(); !told.empty(); told = next())
            if (told.find(part) != told.npos)
                return true;
        return false;
    }
    // What it has told by now. So many are waited for.
    std::vector<std::string> told(std::size_t least = 0) {
        std::vector<std::string> all;
        while (all.size() < least) {
            all.push_back(next());
            if (all.back().empty())
                return all;
        }
        tell("mark");
        for (std::string told = next(); told != "marked" && !told.empty(); told = next())
            all.push_back(told);
        return all;
    }

    void signal(int number) const { ::kill(process_->id(), number); }
    bool ends() const { return process_->ends(patience).has_value(); }

private:
    std::string next() {
        std::string line = process_->line(patience);
        if (line.ends_with('\r'))
            line.pop_back();
        return line;
    }

    std::unique_ptr<Child> process_;
};

} // namespace larkspin
