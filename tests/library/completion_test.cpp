#include "library/completion.h"

#include "support/talk.h"

namespace larkspin {

// What stands in the line after Tab.
static std::string completed(const AppState& state, const std::string& typed) {
    const Completion completion = completionOf(state, typed);
    return typed.substr(0, typed.size() - completion.replaced) + completion.text;
}

// What it can become, where that has to be chosen.
static Lines choicesFor(const AppState& state, const std::string& typed) {
    const Completion completion = completionOf(state, typed);
    Lines shown;
    for (const Completion::Choice& choice : completion.choices)
        if (completion.addsNothing)
            shown.push_back(choice.shown);
    return shown;
}

TEST(Completion, GoesAsFarAsIsSure) {
    VirtualMachine machine;
    std::string rows = "no song\n" + machine.song("pop", "Ride.mp3") + "\n";
    for (const char* name : {"Ride on.mp3", "Ride.mp3", "rest.wav", "What?.mp3"})
        rows += machine.song("rock", name) + "\n";
    machine.writeDataFile("temp.lst", rows);
    machine.start();
    AppState& state = machine.state();
    state.commandNames.clear();
    for (const char* form : {"'len", "'pl", "'play", "'play *", "'rnd *", "'tempo 0-150", "'trig?"})
        state.commandNames.add(form);
    state.p = {"Rock.lkl", "rocket.lkl", "pop.lkl"};
    const std::tuple<const char*, const char*, Lines> cases[] = {
        {"'T", "'t", {"'tempo 0-150", "'trig?"}},
        {"'TE", "'tempo ", {}},
        {"'LE", "'len", {}},
        {"'pla", "'play", {}},
        {"'play", "'play", {"'play", "'play *"}},
        {"", "'", {}},
        {"'", "'", {"'len", "'pl", "'play", "'play *", "'rnd *", "'tempo 0-150", "'trig?"}},
        {"'play r", "'play r", {"rest", "Ride", "Ride on"}},
        {"'PLAY RI", "'PLAY Ride", {}},
        {"'PLAY RIDE", "'PLAY Ride", {"Ride", "Ride on"}},
        {"'play ride ", "'play Ride on", {}},
        {"'rnd what?", "'rnd What?", {}},
        {"'num re", "'num 2", {}},
        {"'num ride", "'num Ride", {"3  Ride", "4  Ride", "5  Ride on"}},
        {"'num ride o", "'num 5", {}},
        {"'play DE", "'play DE", {"Ride", "Ride on"}},
        {"'play e on", "'play Ride on", {}},
        {"'num t?", "'num 6", {}},
        {"'list r", "'list Rock", {}},
        {"'list Rock", "'list Rock", {"Rock", "rocket"}},
        {"'save p", "'save pop", {}},
        {"'tempo r", "'tempo r", {}},
        {".play r", ".play r", {}},
    };
    for (const auto& [typed, line, choices] : cases) {
        EXPECT_EQ(completed(state, typed), line);
        EXPECT_EQ(choicesFor(state, typed), choices) << typed;
    }
    state.trigger = "";
    EXPECT_EQ(completed(state, "play ri"), "play Ride");
}

TEST(Completion, TellsOfEachChoiceWhatItDoesAndLeadsTo) {
    VirtualMachine machine({"ride.mp3", "rain.mp3"});
    const auto told = [&](const std::string& typed) {
        Lines choices;
        for (const auto& [text, shown, help] : completionOf(machine.state(), typed).choices)
            choices.push_back(text + '|' + shown + '|' + help);
        return choices;
    };
    EXPECT_EQ(told("'tem"), Lines{"'tempo |'tempo 0-150|sets speed"});
    EXPECT_EQ(told("'vo"), Lines{"'volume |'volume 0-100|sets volume"});
    EXPECT_EQ(told("'num r"), (Lines{"1|1  rain|", "2|2  ride|"}));
    EXPECT_EQ(told("'t").front(), "'tempo |'tempo 0-150|sets speed");
}

TEST(Completion, LeavesOutWhatNobodyLooksThrough) {
    Lines songs;
    for (int song = 1000; song < 1300; ++song)
        songs.push_back("1" + std::to_string(song) + ".mp3");
    VirtualMachine machine(songs);
    const Completion completion = completionOf(machine.state(), "'play 1");
    EXPECT_EQ(completion.text, "11");
    EXPECT_EQ(completion.choices.size(), 200u);
    EXPECT_EQ(completion.others, 100);
}

} // namespace larkspin
