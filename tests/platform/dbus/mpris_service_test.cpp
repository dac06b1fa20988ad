// larkspin on a session bus of the test's own, steered by a real client.
#include "shell/media_types.h"
#include "support/child.h"
#include "support/made_songs.h"
#include "support/patience.h"
#include "support/private_bus.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace larkspin {
namespace {

struct OnTheSessionBus : testing::Test {
    OnTheSessionBus() {
        std::filesystem::create_directory(disk.path() / "Music");
        for (const char* song : {"high & \u00FC?.wav", "ride.wav"})
            EXPECT_TRUE(makeSong(disk.path() / "Music" / song, 30));
        EXPECT_TRUE(makeTaggedSong(disk.path() / "Music" / "tagged.flac", 30,
                                   R"(title=\"Who?\",artist=\"AC/DC\",album=Live)"));
        variables.push_back("DBUS_SESSION_BUS_ADDRESS=" + bus.address());
        child = Child::start(LARKSPIN_TTY, variables);
        say("'filter wav", "media filter");
        say("'scan ~/Music", "found");
        say("'transfer", "transferring");
    }
    void say(const std::string& line, std::string_view answer) {
        child->tell(line);
        EXPECT_TRUE(child->says(answer, patience)) << line;
    }

    // What the client prints, without the line's end.
    std::string client(const std::string& words) const {
        const std::string command = "DBUS_SESSION_BUS_ADDRESS=" + bus.address() +
                                    " timeout 20 playerctl -p larkspin " + words + " 2>&1";
        std::unique_ptr<FILE, int (*)(FILE*)> output(::popen(command.c_str(), "r"), ::pclose);
        std::string printed;
        for (int c = 0; (c = std::fgetc(output.get())) != EOF;)
            printed += static_cast<char>(c);
        return printed.substr(0, printed.find('\n'));
    }

    TempDirectory disk;
    PrivateBus bus;
    std::vector<std::string> variables = ownHome(disk.path().native());
    std::unique_ptr<Child> child;
};

TEST_F(OnTheSessionBus, TellsAndDoesWhatAPlayersControlAsksFor) {
    say("'play ride", "ride");
    // Until it sounds: without a device a song begins once more.
    comes([&] { return !client("position").starts_with("0."); });
    const std::string title = "metadata title", address = "metadata xesam:url";
    const std::string number = "metadata mpris:trackid";
    const std::string music = "file://" + disk.path().native() + "/Music/";
    const struct {
        std::string told, asked, seen;
    } steps[] = {
        {"", "status", "Playing"},
        {"", title, "ride"},
        {"", address, music + "ride.wav"},
        {"pause", "status", "Paused"},
        {"position 20", "position", "20.000000"}, // where it stays
        {"position 40", "position", "20.000000"}, // past the end
        {"", number, "'/org/larkspin/song/1'"},
        {"play-pause", "status", "Playing"},
        {"volume 0.3", "volume", "0.300000"},
        {"volume 7", "volume", "1.000000"},
        {"loop Playlist", "loop", "Playlist"},
        {"shuffle On", "loop", "None"},
        {"shuffle Off", "shuffle", "Off"},
        {"previous", title, "high & \u00FC?"},
        {"", number, "'/org/larkspin/song/2'"},
        {"", address, music + "high%20%26%20%C3%BC%3F.wav"},
        {"next", title, "ride"},
        {"stop", "status", "Stopped"},
        {"play", "status", "Playing"},
        {"open " + music + "high%20%26%20%C3%BC%3F.wav", title, "high & \u00FC?"},
        {"", "metadata artist", "No player could handle this command"},
        {"open " + music + "tagged.flac", "metadata artist", "AC/DC"},
        {"", "metadata album", "Live"},
        {"", title, "Who?"},
        {"open " + music + "high%20%26%20%C3%BC%3F.wav", title, "high & \u00FC?"},
        {"open file:///etc/passwd", title, "high & \u00FC?"},
        {"open https://example.org/ride.wav", title, "high & \u00FC?"},
    };
    for (const auto& step : steps) {
        if (!step.told.empty())
            client(step.told);
        std::string seen;
        comes([&] { return (seen = client(step.asked)) == step.seen; });
        EXPECT_EQ(seen, step.seen) << step.told;
    }
    child->endInput();
    EXPECT_EQ(child->rest(patience).find("next:"), std::string::npos) << "all without a word";
}

TEST_F(OnTheSessionBus, PressesTheButtonsThatAnotherCopyIsStartedFor) {
    say("'play ride", "ride");
    comes([&] { return !client("position").starts_with("0."); });
    const auto expect = [&](const std::string& asked, const std::string& wanted) {
        std::string seen;
        comes([&] { return (seen = client(asked)) == wanted; });
        EXPECT_EQ(seen, wanted);
    };
    const struct {
        const char *option, *asked, *seen;
    } steps[] = {{"--play-pause", "status", "Paused"},
                 {"--play-pause", "status", "Playing"},
                 {"--previous", "metadata title", "high & \u00FC?"},
                 {"--next", "metadata title", "ride"}};
    for (const auto& [option, asked, seen] : steps) {
        EXPECT_EQ(Child::start(LARKSPIN_TTY, variables, {option})->ends(patience), 0) << option;
        expect(asked, seen);
    }
    child->endInput();
    EXPECT_EQ(child->ends(patience), 0);
    child = Child::start(LARKSPIN_TTY, variables, {"--play-pause"}); // there is no other one now
    expect("metadata title", "ride");
    child->endInput();
    EXPECT_EQ(child->ends(patience), 0);
}

TEST_F(OnTheSessionBus, SaysWhatItOpens) {
    Bus desktop(bus.address());
    const auto told = [&](const char* property) {
        std::vector<std::string> texts;
        char** strings = nullptr;
        EXPECT_GE(sd_bus_get_property_strv(desktop.raw(), "org.mpris.MediaPlayer2.larkspin",
                                           "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2",
                                           property, nullptr, &strings),
                  0);
        for (char** text = strings; text && *text; ++text) {
            texts.emplace_back(*text);
            std::free(*text);
        }
        std::free(strings);
        return texts;
    };
    EXPECT_EQ(told("SupportedUriSchemes"), std::vector<std::string>{"file"});
    EXPECT_EQ(told("SupportedMimeTypes"), desktopMediaTypes());
}

TEST_F(OnTheSessionBus, OutlivesTheBus) {
    bus.signal(SIGKILL);
    say("'volume 30", "volume set");
    child->endInput();
    EXPECT_EQ(child->ends(patience), 0);
}

} // namespace
} // namespace larkspin
