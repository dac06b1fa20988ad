// A running program hears anything, all its words among it, from its owner and from strangers.
#include "app/command_rows.h"
#include "fuzz/fuzz.h"
#include "support/virtual_machine.h"
#include "text/fold.h"

#include <tuple>

using namespace larkspin;

static std::vector<std::string> wordsWithEffect(Program& program) {
    std::vector<std::string> words;
    for (const auto handler : {HandledBy::NiteScan1, HandledBy::NiteScan2, HandledBy::NiteScan3})
        for (const CommandRow& row : commandRows(program, handler))
            if (row.pattern != "exit")
                words.emplace_back(row.pattern);
    return words;
}

static std::string anyCommand(FuzzedDataProvider& input, VirtualMachine& machine) {
    static const std::vector<std::string> words = wordsWithEffect(*machine.program);
    // Equal bytes, of which inputs are full, are different words.
    const std::size_t place = input.remaining_bytes();
    const std::size_t word = place + input.ConsumeIntegral<std::uint8_t>();
    std::string text = machine.state().trigger + words[word % words.size()];
    if (text.ends_with('*')) {
        text.pop_back();
        const int kind = input.ConsumeIntegral<std::uint8_t>();
        text += kind > 50   ? std::to_string(kind - 54)
                : kind > 25 ? input.PickValueInArray({"none", ".", "wav", "R"})
                            : input.ConsumeBytesAsString(6);
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
    VirtualMachine machine({"ride.mp3", "Walk {live}.wav", "rain.MP3"}, 20s);
    machine.song("rock", "New.mp3");
    machine.files.full = input.ConsumeBool();
    while (input.remaining_bytes() > 0) {
        const int how = input.ConsumeIntegral<std::uint8_t>();
        std::string text = how % 8 ? anyCommand(input, machine) : input.ConsumeBytesAsString(8);
        if (foldCase(text).find("scan ") != text.npos) // not of the real disk
            text = machine.state().trigger + "scan " + machine.drive("music");
        const std::string speaker = how % 5 ? "Owner" : "owner";
        const bool counts = speaker == "Owner" && (text.starts_with(machine.state().trigger) ||
                                                   foldCase(text) == "'trig?");
        const auto before = effects(machine);
        if (!machine.somebody(speaker, text))
            return 0; // it was told to exit
        demand(counts || effects(machine) == before);
        machine.advance(std::chrono::seconds(how % 3 * 10));
        demandSoundState(machine.state());
    }
    return 0;
}
