// The desktop program on a session bus: its icon on a desktop that shows such icons by that bus
// (StatusNotifier), and the copy that is started again.
#include "support/desktop_program.h"
#include "support/private_bus.h"

#include <map>
#include <mutex>
#include <string_view>

namespace larkspin {
namespace {

// A desktop's tray. Its host comes a moment after its watcher, as on a real one.
class PretendTray {
public:
    explicit PretendTray(const std::string& address)
        : service_(address, "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                   [this](sd_bus_message* call) { return answer(call); }) {}

    // Where the icon can be asked; empty for none.
    std::string icon() const {
        const std::lock_guard lock(mutex_);
        return icon_;
    }

private:
    static constexpr const char* interface = "org.kde.StatusNotifierWatcher";

    PretendService::Then answer(sd_bus_message* call) {
        const std::string_view member = sd_bus_message_get_member(call);
        if (member == "Introspect") {
            sd_bus_reply_method_return(
                call, "s",
                "<node><interface name='org.kde.StatusNotifierWatcher'>"
                "<method name='RegisterStatusNotifierItem'><arg type='s' direction='in'/></method>"
                "<property name='IsStatusNotifierHostRegistered' type='b' access='read'/>"
                "</interface></node>");
        } else if (member == "Get") {
            sd_bus_reply_method_return(call, "v", "b", hasHost_);
            if (!std::exchange(hasHost_, true))
                sd_bus_emit_signal(sd_bus_message_get_bus(call), "/StatusNotifierWatcher",
                                   interface, "StatusNotifierHostRegistered", "");
        } else {
            const std::lock_guard lock(mutex_);
            icon_ = sd_bus_message_get_sender(call);
            sd_bus_reply_method_return(call, "");
        }
        return PretendService::Then::stays;
    }

    bool hasHost_ = false;
    mutable std::mutex mutex_;
    std::string icon_;
    PretendService service_;
};

struct DesktopOnABus : DesktopProgram {
    DesktopOnABus() {
        bus = daemon.address();
        disk.write("larkspin/larkspin.ini", "[lark]\nload=2\nmedia filter=wav\nmp3svis=no\n");
    }
    void TearDown() override {
        if (program)
            ::kill(program->id(), SIGTERM);
    }

    PrivateBus daemon;
    std::unique_ptr<Child> program;
};

using Entries = std::map<std::string, int>;

// Reads the entries of a menu with all that are below them: their captions, each with its number,
// which stands in front of an entry's properties.
void readEntries(sd_bus_message* layout, Entries& entries, int id = 0, bool isLabel = false) {
    char type = 0;
    const char *inside = nullptr, *text = nullptr;
    while (sd_bus_message_peek_type(layout, &type, &inside) > 0) {
        if (type == SD_BUS_TYPE_STRING && sd_bus_message_read_basic(layout, type, &text) > 0) {
            if (isLabel)
                entries[text] = id;
            isLabel = std::string_view(text) == "label";
        } else if (!inside) {
            sd_bus_message_skip(layout, std::string(1, type).c_str());
        } else {
            sd_bus_message_enter_container(layout, type, inside);
            if (type == SD_BUS_TYPE_STRUCT)
                sd_bus_message_read(layout, "i", &id);
            readEntries(layout, entries, id, isLabel);
            sd_bus_message_exit_container(layout);
        }
    }
}

struct TrayOnABus : DesktopOnABus {
    void beginWith(bool hasTray) {
        if (hasTray)
            tray.emplace(bus);
        program = start(server->display());
        if (hasTray)
            findIcon();
    }
    void findIcon() {
        EXPECT_TRUE(comes([&] { return !tray->icon().empty(); }));
        name = tray->icon();
    }
    BusMethod activation() const {
        return {name.c_str(), "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate"};
    }
    void click() const { EXPECT_TRUE(ask(activation(), "ii", 0, 0)); }
    // Opens the menu, as a desktop does.
    Entries menu() const {
        Entries entries;
        ask(ofMenu("AboutToShow"), "i", 0);
        const BusMessage layout = ask(ofMenu("GetLayout"), "iias", 0, -1, 0);
        if (layout && sd_bus_message_skip(layout.get(), "u") > 0)
            readEntries(layout.get(), entries);
        return entries;
    }
    void choose(const std::string& caption) const {
        Entries entries = menu();
        EXPECT_TRUE(entries.contains(caption)) << caption;
        ask(ofMenu("Event"), "isvu", entries[caption], "clicked", "i", 0, 0);
    }

    // Waits for the answer, which is null for an error.
    template <typename... Arguments>
    BusMessage ask(const BusMethod& asked, const char* types, Arguments... arguments) const {
        sd_bus_message* answer = nullptr;
        sd_bus_call_method(desktop.raw(), asked.destination, asked.path, asked.interface,
                           asked.member, nullptr, &answer, types, arguments...);
        return BusMessage(answer);
    }

    Bus desktop{bus};
    std::optional<PretendTray> tray;
    std::string name;

private:
    BusMethod ofMenu(const char* member) const {
        return {name.c_str(), "/MenuBar", "com.canonical.dbusmenu", member};
    }
};

TEST_F(TrayOnABus, ShowsAndHidesByOneClickAndTakesTwoAsOne) {
    beginWith(true);
    EXPECT_FALSE(isSeen("^larkspin media$"));
    const BusMethod once = activation(); // and again, without waiting in between
    sd_bus_call_method_async(desktop.raw(), nullptr, once.destination, once.path, once.interface,
                             once.member, nullptr, nullptr, "ii", 0, 0);
    click();
    EXPECT_TRUE(sees("^larkspin media$"));
    EXPECT_TRUE(comes([&] { // the first one that makes no pair with those before
        click();
        return !isSeen("^larkspin media$");
    }));
}

TEST_F(TrayOnABus, ChoosesFromTheMenuWhichIsThatOfTheMoment) {
    disk.write("larkspin/a_b&c.lkl", "");
    beginWith(true);
    EXPECT_TRUE(menu().contains("view 0 files"));
    EXPECT_TRUE(menu().contains("a__b_&c.lkl")) << "escaped";
    choose("lks version");
    EXPECT_TRUE(sees("^larkspin$"));
    choose("exit");
    EXPECT_EQ(program->ends(patience), 0);
    EXPECT_TRUE(hasSaved());
}

TEST_F(TrayOnABus, FollowsATrayThatComesLateAndOneThatGoes) {
    beginWith(false);
    EXPECT_TRUE(sees("^larkspin media$"));
    for (int times = 0; times < 2; ++times) {
        tray.emplace(bus);
        findIcon();
        tray.reset();
    }
    tray.emplace(bus);
    findIcon();
    click();
    EXPECT_TRUE(comes([&] { return !isSeen("^larkspin media$"); }));
}

TEST_F(DesktopOnABus, BringsTheRoomBackWhenItIsStartedAgain) {
    const auto manager =
        Child::start("openbox", {"DISPLAY=" + server->display()}, {"--sm-disable"});
    program = start(server->display());
    const std::string room = "^larkspin - lobby$";
    EXPECT_TRUE(comes([&] { // once there is a window manager that can do it
        server->hand({"search", "--name", room, "windowminimize", "%1"});
        return hasSaved("\nload=3") && !isSeen(room);
    }));
    const auto second = start(server->display());
    EXPECT_TRUE(sees(room));
    EXPECT_TRUE(sees("^larkspin$"));
    ::kill(second->id(), SIGKILL);
    EXPECT_TRUE(comes([&] { // the search fails while that copy's windows go
        server->hand({"search", "--name", room, "windowminimize", "%1"});
        return !isSeen(room);
    }));
    EXPECT_EQ(start(server->display(), "gone.mp3")->ends(patience), 0);
    EXPECT_TRUE(sees(room)) << "and tells what it was given";
    ::kill(manager->id(), SIGTERM);
}

} // namespace
} // namespace larkspin
