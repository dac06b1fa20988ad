// The desktop program with a window manager, on buses of its own, read as a screen reader reads it
// (screen_reader.cpp), and worked by a hand that goes by what is read.
#pragma once

#include "support/desktop_program.h"
#include "support/private_bus.h"
#include "support/x_windows.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

// Something in sight.
struct Heard {
    int depth = 0; // in its window, which has 1 and stands before it
    std::string role, left, top, width, height, name, text, window;

    bool operator==(const Heard&) const = default;
};

class DesktopAloud : public DesktopProgram {
protected:
    DesktopAloud() {
        bus = daemon.address();
        auto variables = ownHome(disk.path().native());
        variables.insert(variables.end(),
                         {"DBUS_SESSION_BUS_ADDRESS=" + bus, "DISPLAY=" + server->display(),
                          "GSETTINGS_BACKEND=memory"});
        // As a desktop does whose owner has a screen reader.
        accessibility = Child::start("sh", variables,
                                     {"-c", "exec /usr/libexec/at-spi-bus-launcher --a11y=1 "
                                            "--launch-immediately --screen-reader=1 2>/dev/null"});
        manager = Child::start("openbox", {"DISPLAY=" + server->display()}, {"--sm-disable"});
        variables.push_back("XDG_CONFIG_HOME=" + disk.path().native());
        reading = variables;
    }
    ~DesktopAloud() override {
        for (const auto* const child : {&program, &manager, &accessibility})
            if (*child)
                ::kill((*child)->id(), SIGTERM);
    }

    std::vector<Heard> look() const {
        const auto reader = Child::start(LARKSPIN_SCREEN_READER, reading);
        std::istringstream lines(reader->rest(patience));
        std::vector<Heard> all;
        std::string window;
        for (std::string line; std::getline(lines, line);) {
            std::istringstream fields(line);
            std::string depth;
            Heard heard;
            std::getline(fields, depth, '\t');
            for (std::string* field : {&heard.role, &heard.left, &heard.top, &heard.width,
                                       &heard.height, &heard.name, &heard.text})
                std::getline(fields, *field, '\t');
            heard.depth = std::atoi(depth.c_str());
            heard.window = window = heard.depth == 1 ? heard.name : window;
            all.push_back(heard);
        }
        return all;
    }
    std::optional<Heard> find(const std::string& role, const std::string& name) const {
        const auto all = look();
        const auto found = std::ranges::find_if(
            all, [&](const Heard& each) { return each.role == role && each.name == name; });
        return found == all.end() ? std::nullopt : std::optional(*found);
    }
    bool hears(const std::string& role, const std::string& name) const {
        return comes([&] { return find(role, name).has_value(); });
    }
    bool hearsText(const std::string& name, const std::string& text) const {
        return comes([&] {
            const auto found = find("text", name);
            return found && found->text.find(text) != std::string::npos;
        });
    }
    // The role and name of all that lies in such a thing, a line each.
    std::string inside(const std::string& role, const std::string& name) const {
        std::string words;
        int depth = -1;
        for (const Heard& each : look()) {
            if (each.depth <= depth)
                break;
            if (depth >= 0)
                words += each.role + ' ' + each.name + '\n';
            else if (each.role == role && each.name == name)
                depth = each.depth;
        }
        return words;
    }

    // Once it has come to rest, and nothing lies over it.
    void click(const std::string& role, const std::string& name, const char* button = "1") const {
        std::optional<Heard> before;
        EXPECT_TRUE(comes([&] {
            const auto now = find(role, name);
            return now && std::exchange(before, now) == now && pointsAt(*now);
        })) << role
            << ' ' << name;
        EXPECT_TRUE(server->hand({"click", button}));
        if (role == "text" && before)
            expectKeyboard(before->window);
    }
    // Before that a key would go elsewhere.
    void expectKeyboard(const std::string& window) const {
        EXPECT_TRUE(comes([&] { return nameWithKeyboard(server->display()) == window; }));
    }
    void type(const std::string& line) const {
        EXPECT_TRUE(server->hand({"type", line}));
        press({"Return"});
    }

    PrivateBus daemon;
    std::unique_ptr<Child> accessibility, manager, program;

private:
    // A window that has just come may not be on the display yet. Menus are windows of their own.
    bool pointsAt(const Heard& heard) const {
        const auto middle = [](const std::string& begin, const std::string& size) {
            return std::to_string(std::atoi(begin.c_str()) + std::atoi(size.c_str()) / 2);
        };
        return server->hand({"mousemove", middle(heard.left, heard.width),
                             middle(heard.top, heard.height)}) &&
               (heard.role == "menu item" || nameUnderMouse(server->display()) == heard.window);
    }

    std::vector<std::string> reading; // the reader's variables
};

} // namespace larkspin
