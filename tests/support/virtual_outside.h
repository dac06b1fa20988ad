// What lies outside the program, for tests to set and to look at.
#pragma once

#include "outside/machine_facts.h"
#include "outside/other_player.h"
#include "outside/power.h"

#include <map>
#include <string>
#include <vector>

namespace larkspin {

class SettablePlayer : public OtherPlayer {
public:
    bool press(Button button) override {
        if (runs)
            pressed.push_back(button);
        return runs;
    }
    std::optional<std::string> title() override {
        return runs ? std::optional(caption) : std::nullopt;
    }

    bool runs = false;
    std::string caption;
    std::vector<Button> pressed;
};

class SettableFacts : public MachineFacts {
public:
    std::string systemName() override { return system; }
    std::uint64_t memoryBytes() override { return memory; }
    DisplaySize display() override { return screen; }
    std::chrono::milliseconds uptime() override { return up; }
    std::optional<DriveSpace> driveSpace(const std::string& path) override {
        const auto found = drives.find(path);
        return found == drives.end() ? std::nullopt : std::optional(found->second);
    }

    std::string system = "debian gnu/linux 12";
    std::uint64_t memory = 128ull * 1048576;
    DisplaySize screen{32, 1024, 768};
    std::chrono::milliseconds up{0};
    std::map<std::string, DriveSpace> drives; // by the path that is asked for
};

class RecordedPower : public Power {
public:
    void restart() override { asked.push_back("restart"); }
    void shutDown() override { asked.push_back("shut down"); }

    std::vector<std::string> asked;
};

} // namespace larkspin
