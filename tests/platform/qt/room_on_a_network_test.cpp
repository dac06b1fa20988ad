// The room's window on a network with others, as a screen reader reads it and a hand works it.
#include "support/desktop_aloud.h"
#include "support/irc_person.h"
#include "support/listener.h"

#include <atomic>
#include <optional>
#include <string>

namespace larkspin {
namespace {

struct RoomOnANetwork : DesktopAloud {
    RoomOnANetwork() {
        disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\ntrigger='\r\nmp3svis=no\r\n");
        program = start(server->display());
        EXPECT_TRUE(
            comes([this] { return hasSaved("\nload=2"); })); // what is typed stays from then on
        click("text", "line to say");
        type("/connect plain 127.0.0.1:" + std::to_string(listener.port()) + " jo #music");
        EXPECT_TRUE(comes([this] { return listener.wasCalled(); }));
        network.emplace(listener.take());
        EXPECT_NE(network->hears("USER ", patience), "");
        network->send(":irc.test 001 jo :welcome");
        EXPECT_NE(network->hears("JOIN #music", patience), "");
        for (const char* const line :
             {":jo!u@h JOIN #music", ":irc.test 332 jo #music :songs and birds",
              ":irc.test 353 jo = #music :@jo +bob ann", ":irc.test 366 jo #music :end",
              ":ann!u@h PRIVMSG #music :hello", ":ann!u@h PRIVMSG jo :psst",
              ":ann!u@h PRIVMSG jo :there?"})
            network->send(line);
        EXPECT_TRUE(hears("list item", "ann, 2 unread, 2 for you"));
    }
    // A desktop's notifications, clicked on as soon as they show. Those after the first one take
    // its place.
    PretendService::Then notify(sd_bus_message* call) {
        if (sd_bus_message_is_method_call(call, nullptr, "Notify") <= 0) {
            sd_bus_reply_method_return(call, "");
            return PretendService::Then::stays;
        }
        sd_bus_reply_method_return(call, "u", 7);
        if (areClicked)
            sd_bus_emit_signal(sd_bus_message_get_bus(call), "/org/freedesktop/Notifications",
                               "org.freedesktop.Notifications", "ActionInvoked", "us", 7,
                               "default");
        return PretendService::Then::stays;
    }

    std::atomic<bool> areClicked = false;
    const PretendService notifications{bus, "org.freedesktop.Notifications",
                                       "/org/freedesktop/Notifications",
                                       [this](sd_bus_message* call) { return notify(call); }};
    const Listener listener;
    std::optional<IrcSocket> network;
};

TEST_F(RoomOnANetwork, IsReadByNameAndRole) {
    EXPECT_TRUE(hears("frame", "larkspin - #music"));
    EXPECT_TRUE(hearsText("what is said", "hello"));
    EXPECT_TRUE(hears("label", "topic: songs and birds"));
    const struct {
        const char *role, *name, *holds;
    } parts[] = {
        {"list", "rooms and private talks",
         "list item lobby\nlist item 127.0.0.1\nlist item #music, here\n"
         "list item ann, 2 unread, 2 for you\n"},
        {"list", "people in the room",
         "list item jo, operator\nlist item bob, voice\nlist item ann\n"},
        {"filler", "song in play",
         "label no songs yet\nlabel \npush button previous song\npush button play\n"
         "push button next song\nslider position\nlabel \nslider volume\n"
         "push button mode: no mode\n"},
        {"menu bar", "menus",
         "menu item room\nmenu item music\nmenu item play\nmenu item windows\nmenu item help\n"},
    };
    for (const auto& [role, name, holds] : parts)
        EXPECT_EQ(inside(role, name), holds) << name;
    EXPECT_TRUE(server->hand({"type", "'pl"}));
    EXPECT_TRUE(hearsText("line to say", "'pl"));
    press({"Tab"});
    EXPECT_TRUE(hears("list item", "'play *, plays the song"));
    EXPECT_TRUE(
        inside("list", "what the line can become").starts_with("list item 'pl?, tells how "));
    press({"Escape", "alt+p"});
    EXPECT_TRUE(hears("menu item", "continuous"));
    EXPECT_TRUE(inside("popup menu", "play").starts_with("menu item previous\nmenu item play\n"));
}

TEST_F(RoomOnANetwork, IsWorkedByMouseAndKeys) {
    click("list item", "ann, 2 unread, 2 for you");
    EXPECT_TRUE(hears("frame", "larkspin - ann"));
    EXPECT_TRUE(hearsText("what is said", "there?"));
    EXPECT_TRUE(server->hand({"type", "half"}));
    press({"alt+Up"});
    EXPECT_TRUE(hears("frame", "larkspin - #music"));
    EXPECT_TRUE(comes([this] {
        const auto line = find("text", "line to say");
        return line && line->text.empty();
    }));
    press({"alt+2"});
    EXPECT_TRUE(hearsText("line to say", "half"));
    press({"alt+1"});

    click("list item", "bob, voice", "3");
    EXPECT_TRUE(comes([this] { return nameUnderMouse(server->display()) == "bob"; }));
    press({"Up", "Up", "Return"}); // "put out", above "put out, and keep out"
    EXPECT_NE(network->hears("KICK #music bob", patience), "");

    click("menu item", "room");
    click("menu item", "preferences...");
    click("check box", "show when a line was said");
    EXPECT_TRUE(comes([this] { return hasSaved("\ntime stamps=no"); }));
    press({"Escape"});
    expectKeyboard("larkspin - #music");
    press({"F1"});
    EXPECT_TRUE(hearsText("what is said", "playing: 'play "));
}

TEST_F(RoomOnANetwork, CallsItsOwnerBackFromElsewhere) {
    click("label", "larkspin playlist editor");
    areClicked = true;
    network->send(":bob!u@h PRIVMSG jo :psst");
    EXPECT_TRUE(hears("frame", "larkspin - bob"));
    EXPECT_TRUE(server->hand({"type", "here"}));
    EXPECT_TRUE(hearsText("line to say", "here"));
}

} // namespace
} // namespace larkspin
