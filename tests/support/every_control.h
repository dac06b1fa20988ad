// Every control of every window and every entry of every menu, in every state that they can be met
// in, to be worked by some hand. What each of them does is told elsewhere: here nothing may crash
// or hang, and lists that belong together must stay together.
#pragma once

#include "app/program.h"
#include "library/playlist_row.h"
#include "support/talk.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

struct Situation {
    const char* name;
    Lines lines; // that lead to it
    std::function<void(VirtualMachine&)> put = [](VirtualMachine&) {};
};

inline RowList fullList(RowList::Order order) {
    RowList list(order);
    while (!list.full())
        list.add(makerow("song " + std::to_string(list.count()), ".mp3", "c:\\gone"));
    return list;
}

inline std::vector<RowList*> toldLists(AppState& state) {
    return {&state.notes, &state.appTitles, &state.appPaths};
}

inline void emptyLists(VirtualMachine& machine) {
    AppState& state = machine.state();
    for (RowList* list : {&state.masterList, &state.playlistView, &state.scanRows})
        list->clear();
    for (RowList* list : toldLists(state))
        list->clear();
}

inline void fillLists(VirtualMachine& machine) {
    static const RowList sorted = fullList(RowList::Order::sorted);
    static const RowList unsorted = fullList(RowList::Order::ofAddition);
    AppState& state = machine.state();
    state.masterList = state.playlistView = sorted;
    for (RowList* list : toldLists(state))
        *list = unsorted;
    machine.loop.once(2s, [&state] { // to tell all of them would take hours
        for (RowList* list : toldLists(state))
            list->clear();
    });
}

inline const std::vector<Situation> situations{
    {"empty lists", {}, emptyLists},
    {"full lists", {}, fillLists},
    {"playing", {"'num 1"}},
    {"paused", {"'num 1", "'pause"}},
    {"silent", {"'num 2", "'silent"}},
    {"a choice to make", {"'play song", "'view"}},
    {"shuffle and a small window",
     {"'shuffle", "'rnd"},
     [](VirtualMachine& machine) { machine.window("mp3s").place.height = 315; }},
};

// Something in every list, and every window shown.
inline void furnish(VirtualMachine& machine) {
    emptyLists(machine);
    AppState& state = machine.state();
    state.silnt = false;
    for (const char* name : {"song one.mp3", "song two.wav", "song three.mid"}) {
        const std::string row = machine.song("rock", name, 20s);
        state.masterList.add(row);
        state.playlistView.add(row);
        state.scanRows.add(row);
    }
    for (const char* text : {"milk", "<b>\t\u202Ebread"}) {
        state.notes.add("11/25/26-09:30 pm:     " + std::string(text));
        state.appTitles.add(text);
        state.appPaths.add(machine.drive("music/rock/song one.mp3"));
    }
    for (Window* window : machine.program->windows())
        window->visible = true;
    machine.window("mp3s").place.height = 2520;
}

inline void expectWhole(VirtualMachine& machine, const std::string& what) {
    AppState& state = machine.state();
    EXPECT_EQ(state.masterList.count(), state.playlistView.count()) << what;
    int apart = 0;
    for (int row = 0; row < state.masterList.count(); ++row)
        apart += state.masterList.row(row) != state.playlistView.row(row);
    EXPECT_EQ(apart, 0) << what;
    EXPECT_EQ(state.appTitles.count(), state.appPaths.count()) << what;
}

inline Lines controlNames(const Window& window) {
    Lines names;
    for (const Control& control : window.controls)
        names.push_back(control.name);
    return names;
}

inline void chooseAll(VirtualMachine& machine, const std::vector<MenuEntry>& entries) {
    for (const MenuEntry& entry : entries) {
        chooseAll(machine, entry.children);
        if (entry.action && entry.name != "exit")
            machine.run(entry.action);
    }
}

inline void chooseFromPopups(VirtualMachine& machine) {
    if (const auto menu = std::exchange(machine.desktop.popup, {}))
        chooseAll(machine, menu->entries());
}

// What the owner's hand does to one control.
using WorkControl = std::function<void(Window& window, const std::string& control)>;

inline void workAllOf(VirtualMachine& machine, const Situation& situation,
                      const std::string& answer, const WorkControl& workControl) {
    const auto work = [&](const std::string& what, const Task& hand) {
        furnish(machine);
        for (const std::string& line : situation.lines)
            machine.owner(line);
        situation.put(machine);
        machine.dialogs.answers = std::deque<std::string>(20, answer);
        machine.run(hand);
        chooseFromPopups(machine);
        machine.advance(3s);
        expectWhole(machine, what + ", " + situation.name);
    };
    for (Window* window : machine.program->windows())
        for (const std::string& name : controlNames(*window))
            work(window->name + "." + name, [&] {
                window->visible = true;
                workControl(*window, name);
            });
    work("the tray", [&] { chooseAll(machine, machine.desktop.icon.value().menu.entries()); });
}

inline void workAll(VirtualMachine& machine, const WorkControl& workControl) {
    for (const Situation& situation : situations)
        for (const char* answer : {"", "yes"}) {
            workAllOf(machine, situation, answer, workControl);
            machine.forget();
        }
}

} // namespace larkspin
