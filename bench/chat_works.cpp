// The works that come with every line in the room, on a running program.
#include "app/program.h"
#include "support/virtual_machine.h"
#include "works.h"

namespace larkspin {

namespace {

// Every setting that the program keeps, as after a while of use.
constexpr const char* settings = "[lark]\r\n"
                                 "first load=Friday, December 19, 2003 at 07:05 pm\r\n"
                                 "load=212\r\nplayed=4711\r\ntempo=100\r\nvolume=50\r\n"
                                 "repeat=no\r\nshuffle=no\r\ncontinue=yes\r\nsilent=no\r\n"
                                 "scan pc on load=yes\r\nref on load=no\r\ntrigger='\r\n"
                                 "mp3sec=987654\r\nprogsec=1987654\r\nmedia filter=mp3\r\n"
                                 "mp3svis=yes\r\nplaylist=\r\nplay=Artist 01 - Some Title\r\n"
                                 "playpath=c:\\home\\jo\\Music\\Artist 01 - Some Title.mp3\r\n"
                                 "afont=tahoma\r\nascii color=5083A9\r\nascii=-=lark=-\r\n"
                                 "font=tahoma\r\nfont color=0066BB\r\nefont=tahoma\r\n"
                                 "eascii color=5083A9\r\neascii=-\r\n";

void hearLine(benchmark::State& state, const std::string& speaker, const std::string& text) {
    VirtualMachine machine;
    machine.writeDataFile("larkspin.ini", settings);
    machine.start();
    machine.forget();
    const ChatLine line{speaker, text};
    for (auto _ : state)
        machine.heard(line);
    if (!machine.room.lines.empty())
        state.SkipWithError("answered");
}

void reply(benchmark::State& state) {
    VirtualMachine machine;
    machine.writeDataFile("larkspin.ini", settings);
    machine.start();
    for (auto _ : state) {
        machine.program->chat.reply.saychat(
            "playing:  <b>1</b>.  <b><u>Artist</b></u> 01 - Some Title");
        if (machine.room.lines.empty())
            state.SkipWithError("nothing said");
        machine.forget();
    }
}

} // namespace

void addChatWorks() {
    addWork("a stranger's line", 0.2e-6, [](benchmark::State& state) {
        hearLine(state, "somebody else", "does anybody here know who sings this one?");
    });
    addWork("an owner's line that is no command", 5e-6, [](benchmark::State& state) {
        hearLine(state, "Owner", "does anybody here know who sings this one?");
    });
    addWork("the same after the trigger", 5e-6, [](benchmark::State& state) {
        hearLine(state, "Owner", "'does anybody here know who sings this one?");
    });
    addWork("a reply, with its settings on disk", 150e-6, reply);
}

} // namespace larkspin
