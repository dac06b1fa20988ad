// A running program hears anything, all its words among it, from its owner and from strangers.
#include "app/command_rows.h"
#include "fuzz/fuzz.h"
#include "support/virtual_machine.h"
#include "text/fold.h"

#include <tuple>

using namespace larkspin;

static std::string anyCommand(FuzzedDataProvider& input, VirtualMachine& machine) {
    std::vector<CommandRow> words;
    for (const auto handler : {HandledBy::NiteScan1, HandledBy::NiteScan2, HandledBy::NiteScan3})
        for (const CommandRow& row : commandRows(*machine.program, handler))
            words.push_back(row);
    const auto word = input.ConsumeIntegralInRange<std::size_t>(0, words.size() - 1);
    std::string text = machine.state().trigger + std::string(words[word].pattern);
    if (text.ends_with('*')) {
        text.pop_back();
        text += input.ConsumeBool() ? std::to_string(input.ConsumeIntegralInRange(-3, 210))
                                    : input.ConsumeRandomLengthString(12);
    }
    return text;
}

static auto effects(VirtualMachine& machine) {
    const AppState& state = machine.state();
    return std::tuple(machine.room.lines, machine.dialogs.boxes, machine.player.opened,
                      state.trigger, state.rep, state.crand, state.cintz, state.silnt,
                      state.HScroll2, state.HScroll3, state.masterIndex(), state.pauseMark,
                      state.masterList.count(), state.mediaFilter);
}

static void demandSoundState(const AppState& state) {
    demand(state.rep + state.crand + state.cintz <= 1);
    demand(state.trigger.size() <= 1 &&
           std::string("'.-`,").find(state.trigger) != std::string::npos);
    demand(state.HScroll2 >= 0 && state.HScroll2 <= 100);
    demand(state.HScroll3 >= 0 && state.HScroll3 <= 200);
    demand(state.masterIndex() < state.masterList.count());
    demand(state.masterList.count() == state.playlistView.count());
    for (int index = 0; index < state.masterList.count(); ++index)
        demand(state.masterList.row(index) == state.playlistView.row(index));
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    VirtualMachine machine({"ride.mp3", "Walk {live}.wav", "rain.MP3"});
    machine.files.full = input.ConsumeBool();
    while (input.remaining_bytes() > 0) {
        std::string text = input.ConsumeIntegralInRange(0, 3) ? anyCommand(input, machine)
                                                              : input.ConsumeRandomLengthString(30);
        if (foldCase(text).find("scan ") != text.npos) // not of the real disk
            text = machine.state().trigger + "scan " + machine.drive("music");
        const std::string speaker =
            input.PickValueInArray({"Owner", "Owner", "Owner", "owner", "", "Jo"});
        const bool counts = speaker == "Owner" && (text.starts_with(machine.state().trigger) ||
                                                   foldCase(text) == "'trig?");
        const auto before = effects(machine);
        if (!machine.somebody(speaker, text))
            return 0; // it was told to exit
        demand(counts || effects(machine) == before);
        machine.advance(std::chrono::seconds(input.PickValueInArray({0, 1, 30, 200})));
        demandSoundState(machine.state());
    }
    return 0;
}
