// File transfers in the client's windows: what is told of them, and the upload that is kept out of
// the owner's way.
#include "support/pretend_host.h"
#include "support/talk.h"

namespace larkspin {

static const std::string noUpload = "you arent uploading, bitch";
static const std::string noDownload = "you're not downloading, bitch";

struct TransfersTest : testing::Test {
    TransfersTest() { machine.start(); }

    std::string tray(const std::string& entry) {
        return machine.answerTo([&] { machine.chooseFromTray(entry); });
    }
    void upload(const std::string& status) {
        host.showModal("File Transfer - 45%", {status, "About 5 minutes remaining"});
    }
    void startIdleMode() {
        machine.state().idleClock.connect(machine.loop, [] {});
        machine.state().idleClock.enable();
    }
    using Shown = std::vector<std::pair<HostHandle, int>>;

    VirtualMachine machine;
    PretendHost host{machine};
};

TEST_F(TransfersTest, TellOfNoneOnceOrTwice) {
    EXPECT_EQ(tray("ustatz"), noUpload + "\n[box] " + noUpload);
    EXPECT_EQ(tray("upzon"), noUpload);
    EXPECT_EQ(tray("upzoff"), noUpload);
    converse(machine, {Turn("'ustat", noUpload), Turn("'dstat", noDownload),
                       Turn("'silent", "silent mode - <b>on"), Turn("'ustat", "[box] " + noUpload),
                       Turn("'dstat", "[box] " + noDownload)});
    EXPECT_EQ(tray("ustatz"), "[box] " + noUpload);
    EXPECT_EQ(tray("upzoff"), "[box] " + noUpload);
    startIdleMode();
    EXPECT_EQ(tray("ustatz"), "");
    converse(machine, {Turn({"'ustat", "'dstat"}, ""), Turn("'silentoff", "silent mode - <b>off"),
                       Turn({"'ustat", "'dstat"}, "")});
}

TEST_F(TransfersTest, TellHowFarAnUploadIs) {
    const struct {
        const char *caption, *status, *timeLeft, *file, *percentage, *minutes;
    } cases[] = {
        {"File Transfer - 45%", "Now Uploading Ride.MP3", "About 5 minutes remaining", "Ride.MP3",
         "45", "5"},
        {"File Transfer - File transfer - 9%", "Uploading \xC4 g.mp3", "About 12 minutes remaining",
         "\u00C4 g.mp3", "9", "12"},
        {"Transfer", "no file", "Calculating", "o file", "ransfe", "Calculating"},
        {"-", "g", "Less than a minute remaining", "", "", "less than 1"},
        {"- ", "ng\xE4", "", "", "", ""},
        {"\xE4\xF6", "\xE4\xF6", "\xE4\xF6\xE4 later", "\u00F6", "", "\u00E4\u00F6\u00E4 later"},
        {"", "", "About a minute remaining", "", "", "About a minute remaining"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.caption);
        host.showModal(c.caption, {c.status, c.timeLeft});
        const std::string file = c.file, percentage = c.percentage, minutes = c.minutes;
        const std::string boxed = "[box] upload:  " + file + " - " + percentage;
        EXPECT_EQ(tray("ustatz"), boxed + "% - min:  " + minutes);
        machine.state().silnt = true;
        EXPECT_EQ(machine.answer("'ustat"), boxed + " - min:  " + minutes);
        EXPECT_EQ(tray("ustatz"), boxed + "% - min:  " + minutes);
        machine.state().silnt = false;
    }
    upload("Now Uploading Ride\xB5.MP3\r\n'volume 7");
    EXPECT_EQ(machine.answer("'ustat"),
              "upload:  <b>ride\u00B5.mp3  'volume 7</b> - <b>45%</b> - min:  <b>5");
    host.showModal("File Transfer - 45%", {"a notice"});
    EXPECT_EQ(machine.answer("'ustat"), "");
}

TEST_F(TransfersTest, TellHowFarADownloadIs) {
    const struct {
        const char *caption, *timeLeft, *percentage, *minutes;
    } cases[] = {{"File Transfer - 45%", "About 5 minutes remaining", "45%", "5"},
                 {"File Transfer", "About a minutes remaining", "calculating", "calculating"},
                 {"file", "Calculating", "ile", "less than 1"},
                 {"\xE4-\xF6", "", "", "less than 1"},
                 {"", "About \xE4 minutes remaining", "", "less than 1"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.caption);
        host.showDownload(c.caption, {"Downloading Ride.MP3", c.timeLeft});
        const std::string percentage = c.percentage, minutes = c.minutes;
        EXPECT_EQ(machine.answer("'dstat"),
                  "download:  <b>ride.mp3</b> - <b>" + percentage + "</b> - min:  <b>" + minutes);
        machine.state().silnt = true;
        EXPECT_EQ(machine.answer("'dstat"),
                  "[box] download:  Ride.MP3 - " + percentage + " - min:  " + minutes);
        machine.state().silnt = false;
    }
    host.showDownload("File Transfer - <b>%", {"Downloading <i>Ride", ""});
    EXPECT_EQ(machine.answer("'dstat"), "download:  <b><\u00ADi>ride</b> - <b><\u00ADb>%</b> - min:"
                                        "  <b>less than 1")
        << "tags are text";
    startIdleMode();
    EXPECT_TRUE(machine.answer("'dstat").starts_with("download:  "));
}

TEST_F(TransfersTest, HideAnUploadAndBringItBack) {
    upload("How Uploadable");
    EXPECT_EQ(tray("upzon"), "how uploadable");
    EXPECT_EQ(host.shown, (Shown{{host.modal, 0}, {host.modal, 6}}));
    EXPECT_EQ(tray("upzoff"), "upchat off");
    EXPECT_EQ(host.shown.back(), (std::pair<HostHandle, int>(host.modal, 9)));
    for (const char* other : {"Uploading", "with Now Uploading", "now uploading", ""}) {
        upload(other);
        EXPECT_EQ(tray("upzon"), noUpload) << other;
        EXPECT_EQ(tray("upzoff"), noUpload) << other;
    }
    EXPECT_EQ(host.shown.size(), 3u);
}

// Two uploads one after the other: each is hidden and told of once, even if the owner brings it
// back and while the message itself lets the next second pass.
TEST_F(TransfersTest, HideEachNewUploadOnce) {
    const Lines once{"auto-upchat enabled"};
    for (const char* end : {"File transfer complete.", "Sorry. Upload aborted. Bye"}) {
        upload("Now Uploading a.mp3");
        machine.inMessage("auto", [&] { machine.advance(5s); });
        EXPECT_EQ(machine.saidWithin(2s), once);
        EXPECT_EQ(host.shown, (Shown{{host.modal, 0}, {host.modal, 6}}));
        tray("upzoff");
        EXPECT_EQ(machine.saidWithin(30s), Lines{});
        host.shown.clear();
        host.showModal("America Online", {end});
        EXPECT_EQ(machine.saidWithin(1s), Lines{});
        EXPECT_FALSE(host.has(host.modal));
    }
    EXPECT_EQ(host.pressedButtons, (Lines{"OK", "OK"}));
    EXPECT_EQ(machine.state().uploadSeen, "nope");
}

TEST_F(TransfersTest, LeaveOtherWindowsAlone) {
    for (const char* other :
         {"Finished with uploading x", "Uploading", "File transfer complete", ""}) {
        upload(other);
        EXPECT_EQ(machine.saidWithin(3s), Lines{}) << other;
        EXPECT_TRUE(host.has(host.modal)) << other;
    }
    EXPECT_EQ(host.shown, Shown{});
    upload("Uploading x"); // runs, but isn't called an upload by the word before
    EXPECT_EQ(machine.saidWithin(3s), Lines{"auto-upchat enabled"});
    EXPECT_EQ(host.shown, Shown{});
    upload(""); // over
    machine.owner("'silent", 1s);
    upload("Now Uploading x");
    EXPECT_EQ(machine.saidWithin(3s), Lines{});
    EXPECT_EQ(host.shown.size(), 2u);
}

} // namespace larkspin
