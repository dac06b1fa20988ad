// What a client is told to do (windows_client/main.cpp), what is asked of the program's side of it,
// and what the client tells then: the same for the client of real windows as for the pretended one.
#pragma once

#include "host/window_tree/window_tree_host.h"
#include "text/row_list.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <tuple>
#include <vector>

namespace larkspin {

struct ClientStep {
    std::vector<std::string> told; // to the client
    std::function<std::string(WindowTreeHost& host)> asked = {};
    std::string gives = {};
    std::vector<std::string> tells = {}; // the client, since it was told
};
struct ClientCase {
    const char* about;
    std::vector<ClientStep> steps;
};

// A client with the owner in "Town Square", and the program's side of it.
class CasedClient {
public:
    virtual ~CasedClient() = default;
    virtual void tell(const std::string& line) = 0;
    // What it has told by now. So many lines are waited for.
    virtual std::vector<std::string> told(std::size_t least) = 0;
    virtual WindowTreeHost& host() = 0;
};

inline void expectCase(CasedClient& client, const ClientCase& expected) {
    SCOPED_TRACE(expected.about);
    for (const ClientStep& step : expected.steps) {
        SCOPED_TRACE(&step - expected.steps.data());
        for (const std::string& line : step.told)
            client.tell(line);
        std::vector<std::string> told = client.told(0);
        EXPECT_EQ(step.asked ? step.asked(client.host()) : std::string(), step.gives);
        const std::size_t least = step.tells.size() - std::min(step.tells.size(), told.size());
        for (const std::string& line : client.told(least))
            told.push_back(line);
        EXPECT_EQ(told, step.tells);
    }
}

inline std::vector<ClientCase> clientCases() {
    using Host = WindowTreeHost;
    using Asked = std::function<std::string(Host&)>;
    const auto does = [](const std::function<void(Host&)>& what) -> Asked {
        return [what](Host& host) {
            what(host);
            return std::string();
        };
    };
    const auto names = [](HostHandle (Host::*list)(), bool withSelf = true) -> Asked {
        return [list, withSelf](Host& host) {
            RowList read;
            host.readHostList((host.*list)(), read, withSelf);
            std::string all;
            for (int row = 0; row < read.count(); ++row)
                all += (row > 0 ? "|" : "") + std::string(read.row(row));
            return all;
        };
    };
    const auto mayEject = [](Host& host) { return host.roomPeople().ownerMayEject() ? "1" : "0"; };
    using Act = Deed (RoomPeople::*)(const Person&);
    const auto deed = [](Act act, HostHandle (Host::*list)(), const char* name, int row) -> Asked {
        return [=](Host& host) {
            const Person person{name, row, list ? (host.*list)() : 1};
            const char* const deeds[] = {"done", "undone", "over"};
            return deeds[static_cast<int>((host.roomPeople().*act)(person))];
        };
    };
    const auto owner = [](Host& host) { return host.currentScreenName(); };
    const auto room = [](Host& host) { return host.windowCaption(host.findChatRoom()); };
    const auto say = [&](const std::string& line) {
        return does([line](Host& host) { host.sendChatLine(line); });
    };
    const auto button = [](const char* pattern) -> Asked {
        return [pattern](Host& host) { return host.controlText(host.findRoomIcon(pattern)); };
    };
    const auto told = [](const Transfer& transfer) {
        return transfer.file + '|' + transfer.percentage + '|' + transfer.minutes;
    };
    const auto notice = [told](Host& host) {
        const auto shown = host.notices().notice();
        return !shown ? std::string("none")
                      : shown->text + (shown->isUpload ? ", an upload: " : ": ") +
                            (shown->upload ? told(*shown->upload) : "");
    };
    const auto download = [told](Host& host) {
        const auto shown = host.notices().download();
        return shown ? told(*shown) : "none";
    };
    const auto hideWelcome = does([](Host& host) { host.hideWelcomeWindow(); });
    const auto clock = [](Host& host) { return host.timeOnline().value_or("none"); };
    const auto close = does([](Host& host) { host.closeHost(); });
    const auto account = [](Host& host) { return host.messengerAccount(); };
    const std::string upload =
        "modal File Transfer - 12%|Now Uploading ride.mp3|About 5 minutes remaining";
    const auto people = &Host::peopleList, ejected = &Host::ejectedList;

    return {
        {"the owner's name",
         {{{"signoff"}, owner},
          {{"greeting welcome, Low!"}, owner},
          {{"greeting Dear Welcome, X!"}, owner},
          {{"greeting Welcome, J\xF6!! "}, owner, "J\u00F6"},
          {{"greeting Welcome, "}, owner},
          {{"greeting Welcome, Un"}, owner, "Un"},
          {{"greeting Welcome, !"}, owner},
          {{"second Welcome, Bob!", "signon Ann"}, owner, "Ann"}}},
        {"the greeting",
         {{{}, hideWelcome, "", {"hidden Welcome, Owner! "}},
          {{}, owner, "Owner"},
          {{"greeting Welcome, Owner!"}, hideWelcome, "", {"hidden Welcome, Owner!"}},
          {{}, owner, "Owner"},
          {{"greeting Welcome, Owner!!"}, hideWelcome}}},
        {"lists",
         {{{}, names(people), "Owner"},
          {{}, names(ejected)},
          {{"people Owner|fifteen letters|sixteen letters!||\xC5\x8D|last"},
           names(people),
           "Owner|fifteen letters|sixteen letters!||\u00C5\u008D|last"},
          {{}, names(people, false), "fifteen letters|sixteen letters!||\u00C5\u008D|last"},
          {{"people ", "ejected Bob"}, names(people)},
          {{}, names(ejected), "Bob"},
          {{"noroom"}, names(ejected)}}},
        {"people",
         {{{"people Owner|Ann|Bob"}, mayEject, "0"},
          {{},
           deed(&RoomPeople::toggleIgnored, people, "Bob", 2),
           "done",
           {"pressed Ignore Member 2"}},
          {{"owns 1"}, mayEject, "1"},
          {{}, deed(&RoomPeople::eject, people, "Ann", 1), "done", {"pressed Eject Member 1"}},
          {{}, names(people), "Owner|Bob"},
          {{}, names(ejected), "Ann"},
          {{},
           deed(&RoomPeople::toggleIgnored, people, "Bob", 2), // where he stood before
           "done",
           {"pressed Ignore Member 1"}},
          {{}, deed(&RoomPeople::eject, people, "Ann", 1), "undone"},
          {{}, deed(&RoomPeople::eject, nullptr, "Bob", 1), "over"}, // in another room
          {{},
           [](Host& host) { return host.roomPeople().beginAllowing().value().at(0).name; },
           "Ann",
           {"pressed Ejected List 1"}},
          {{}, deed(&RoomPeople::allow, ejected, "Ann", 0), "done", {"pressed Allow Entry 0"}},
          {{},
           does([](Host& host) { host.roomPeople().endAllowing(); }),
           "",
           {"pressed People List 1"}},
          {{}, names(people), "Owner|Bob|Ann"}}},
        {"buttons",
         {{{}, button("Find"), "Find"},
          {{}, button("Peopl*"), "People List"},
          {{}, button("Eject M*"), "Eject Member"},
          {{},
           does([](Host& host) { host.pressIcon(host.findRoomIcon("Find")); }),
           "",
           {"pressed Find -1"}},
          {{}, does([](Host& host) { host.holdIcon(host.findRoomIcon("Find")); })},
          {{"noroom"}, button("never")}}},
        {"the input line",
         {{{}, say("hi <b>\u00E4\u20AC\u4E2D"), "", {"entered hi <b>\xE4\x80?"}},
          {{}, say(std::string(3000, 'x')), "", {"entered " + std::string(3000, 'x')}},
          {{},
           [](Host& host) {
               const HostHandle here = host.findChatRoom();
               std::string done;
               for (const auto& [where, caption, stays] : {std::tuple(here, "Attic", true),
                                                           {here + 1, "Town Square", true},
                                                           {here, "Town Square", false},
                                                           {here, "Town Square", true}})
                   done +=
                       host.sendChatLineIn(where, caption, "y", [stays = stays] { return stays; })
                           ? "1"
                           : "0";
               return done;
           },
           "0001",
           {"entered y"}},
          {{"typed half a line", "input"},
           does([](Host& host) { host.clearChatInput(); }),
           "",
           {"input half a line"}},
          {{"input"}, {}, "", {"input"}},
          {{"typed half a line"}, say("x"), "", {"entered x"}}, // it is the owner's
          {{"input"}, {}, "", {"input half a line"}}}},
        {"rooms",
         {{{}, room, "Town Square"},
          {{"second \xC4rger"}, room, "\u00C4rger"}, // stands in front
          {{}, names(people)},
          {{"nosecond"}, room, "Town Square"},
          {{"room Attic"}, room, "Attic"},
          {{"people Owner|Ann", "room Cellar"}, names(people), "Owner|Ann"},
          {{"noroom"}, room},
          {{}, say("x")},
          {{}, mayEject, "0"}}},
        {"keywords",
         {{{}, does([](Host& host) { host.gotoKeyword("m\u00FCsic"); }), "", {"keyword m\xFCsic"}},
          {{},
           does([](Host& host) { host.enterPrivateRoom("den"); }),
           "",
           {"keyword aol://2719:2-2-den"}}}},
        {"private messages",
         {{{},
           does([](Host& host) { host.sendInstantMessage("somebody", "hi \u2122"); }),
           "",
           {"keyword aol://9293:somebody", "message somebody: hi \x99"}},
          {{},
           does([](Host& host) { host.takePrivateMessages(false); }), // answered by a box
           "",
           {"keyword aol://9293:$IM_OFF", "message $IM_OFF: lks", "pressed OK -1",
            "closed Send Instant Message"}},
          {{},
           does([](Host& host) { host.takePrivateMessages(true); }),
           "",
           {"keyword aol://9293:$IM_ON", "message $IM_ON: lks", "pressed OK -1",
            "closed Send Instant Message"}}}},
        {"the clock",
         {{{"clock It is 7:05 PM. You have been online for 12 minutes."},
           clock,
           "online for 12 minutes.",
           {"keyword online clock", "pressed OK -1"}}}},
        {"notices",
         {{{}, notice, "none"},
          {{upload}, notice, "Now Uploading ride.mp3, an upload: ride.mp3|12|5"},
          {{},
           does([](Host& host) { host.notices().hide(); }),
           "",
           {"hidden File Transfer - 12%", "minimised File Transfer - 12%"}},
          {{}, notice, "Now Uploading ride.mp3, an upload: ride.mp3|12|5"},
          {{},
           does([](Host& host) { host.notices().bringBack(); }),
           "",
           {"restored File Transfer - 12%"}},
          {{"modal T\xFCr|\xDC\x80 you are"}, notice, "\u00DC\u20AC you are: "},
          {{}, does([](Host& host) { host.notices().confirm(); }), "", {"pressed OK -1"}},
          {{}, notice, "none"},
          {{}, download, "none"},
          {{"download File - 40%|Now Downloading low.mp3|About 2 minutes remaining"},
           download,
           "low.mp3|40%|2"},
          {{"nodownload"}, download, "none"}}},
        {"the messenger", {{{"account Jo\xEB rest"}, account, "Jo\u00EB rest"}}},
        {"the client's end",
         {{{}, close, "", {"closed America  Online"}},
          {{}, [](Host& host) { return std::to_string(host.hostFrame()); }, "0"},
          {{}, owner},
          {{}, room},
          {{}, say("x")},
          {{}, clock, "none"},
          {{}, notice, "none"},
          {{}, does([](Host& host) { host.sendInstantMessage("x", "y"); })},
          {{}, close}}}};
}

} // namespace larkspin
