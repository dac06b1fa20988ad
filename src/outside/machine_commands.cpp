#include "outside/machine_commands.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "outside/byte_units.h"
#include "outside/machine_facts.h"
#include "outside/power.h"
#include "shell/dialogs.h"
#include "shell/files.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/characters.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr double betweenLines = 0.3; // seconds
constexpr double untilSecondTry = 8;

struct Description {
    std::string system, memory, bits, width, height;
};

// Memory is told in whole megabytes, rounded up.
Description describe(MachineFacts& facts) {
    constexpr std::uint64_t megabyte = 1048576;
    const std::uint64_t memory = facts.memoryBytes();
    const DisplaySize display = facts.display();
    return {facts.systemName(),
            std::to_string(memory / megabyte + (memory % megabyte != 0 ? 1 : 0)),
            std::to_string(display.bits), std::to_string(display.width),
            std::to_string(display.height)};
}

struct Uptime {
    std::string days, hours, minutes;
};

Uptime uptimeOf(MachineFacts& facts) {
    using namespace std::chrono;
    const milliseconds up = facts.uptime();
    return {std::to_string(up / days(1)), std::to_string(up % days(1) / hours(1)),
            std::to_string(up % hours(1) / minutes(1))};
}

std::string uptimeBox(const Uptime& up) {
    return "windows uptime:  " + up.days + " days, " + up.hours + " hours, " + up.minutes +
           " minutes";
}

// Both as they were at one moment.
void tellBoth(const Core& core, const std::string& first, const std::string& second) {
    core.recitals.tell({[first] { return first; }, [second] { return second; }}, betweenLines);
}

} // namespace

void MachineCommands::cinfo() {
    if (core_.state.silnt)
        return boxComputer();
    const Description machine = describe(facts_);
    tellBoth(core_, "os:  <b>" + machine.system + "</b> - ram:  <b>" + machine.memory + "</b> mb",
             "resolution:  <b>" + machine.bits + "</b>bit - <b>" + machine.width + "</b>x<b>" +
                 machine.height);
}

void MachineCommands::boxComputer() {
    const Description machine = describe(facts_);
    core_.dialogs.box("operating system:  " + machine.system + " - ram:  " + machine.memory +
                      " mb, display:  " + machine.bits + "bit - " + machine.width + "x" +
                      machine.height);
}

void MachineCommands::free(const std::string& drive) {
    if (core_.reply.refusedInSilence(
            "use your damn computer to figure that shit out in silent mode"))
        return;
    const ThisRun run(core_.state);
    // A letter alone means that drive.
    const std::string place = drive.size() == 1 && isLetter(drive[0]) ? drive + ":\\" : drive;
    // A slow disk is waited for with events served, in which the run may end.
    const DriveSpace space = facts_.driveSpace(place).value_or(DriveSpace{});
    if (!run.lasts())
        return;
    if (space.isUnanswered)
        return core_.reply.saychat(std::string(noAnswer) + ":  <b>" + place);
    if (space.total == 0)
        return core_.reply.saychat("invalid, use this example:  <b>c:\\");
    // Some disks report more free space than they have in all, and the share must not exceed 100 %.
    const std::uint64_t free = std::min(space.free, space.total);
    tellBoth(core_,
             "[<b>" + place + "</b>] capacity:  " + readable(space.total) +
                 " - percent free:  [<b>" + percentage(free, space.total) + "</b>%]",
             "space used:  " + readable(space.total - free) + " - free space:  " + readable(free));
}

void MachineCommands::ut() {
    const Uptime up = uptimeOf(facts_);
    core_.reply.sayOrBox("windows uptime:  <b>" + up.days + "</b> days, <b>" + up.hours +
                             "</b> hrs, <b>" + up.minutes + "</b> mins",
                         uptimeBox(up));
}

void MachineCommands::boxUptime() {
    core_.dialogs.box(uptimeBox(uptimeOf(facts_)));
}

void MachineCommands::rstart() {
    const ThisRun run(core_.state);
    core_.reply.saychat("restarting computer...");
    if (run.lasts())
        restartComputer();
}

void MachineCommands::sdown() {
    const ThisRun run(core_.state);
    core_.reply.saychat("shutting down computer...");
    if (run.lasts())
        shutDownComputer();
}

void MachineCommands::restartComputer() {
    twice(&Power::restart);
}

void MachineCommands::shutDownComputer() {
    twice(&Power::shutDown);
}

// The order is given a second time for a machine that was too busy to obey the first.
void MachineCommands::twice(void (Power::*order)()) {
    const ThisRun run(core_.state);
    (power_.*order)();
    Pause{core_.loop}(untilSecondTry);
    if (run.lasts())
        (power_.*order)();
}

} // namespace larkspin
