// The works over the counter file.
#include "support/virtual_machine.h"
#include "works.h"

namespace larkspin {

namespace {

// Songs with many equal counts and a few high ones, as they come with the years.
std::string countedSongs(int songs) {
    std::string contents = "[times played]\r\n";
    for (int song = 0; song < songs; ++song) {
        const std::string number = std::to_string(song * 7919L % songs);
        contents += "Artist " + number.substr(0, 2) + " - Some Title " + number +
                    ".mp3=" + std::to_string(song % 10 == 0 ? song : song % 7 + 1) + "\r\n";
    }
    return contents;
}

// `top 10` up to its first line, which waits for all that has to be known.
void top(benchmark::State& state) {
    VirtualMachine machine;
    machine.writeDataFile("played.ini", countedSongs(static_cast<int>(state.range(0))));
    machine.start();
    bool isFirst = false;
    std::chrono::steady_clock::time_point begin, firstLine;
    machine.room.inMessage = [&](const std::string&) {
        if (std::exchange(isFirst, false))
            firstLine = std::chrono::steady_clock::now();
    };
    for (auto _ : state) {
        machine.forget();
        isFirst = true;
        begin = std::chrono::steady_clock::now();
        machine.hear("'top 10");
        state.SetIterationTime(std::chrono::duration<double>(firstLine - begin).count());
        machine.advance(std::chrono::minutes(1)); // for the other lines
        if (machine.room.lines.size() != 11)
            state.SkipWithError("wrong recital");
    }
}

} // namespace

void addCounterWorks() {
    addSizedWork("top 10 up to its first line", 0.050, top);
}

} // namespace larkspin
