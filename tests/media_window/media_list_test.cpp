// The playlist on the media window, worked as the owner does.
#include "library/playlist_row.h"
#include "shell/window.h"
#include "support/media_machine.h"

namespace larkspin {

TEST(MediaList, TellsTheSizeOfTheRowThatIsClicked) {
    MediaMachine machine;
    const std::pair<std::uintmax_t, const char*> sizes[] = {
        {0, "0bytes"},       {1023, "1023bytes"}, {1024, "1kb"},        {1536, "1.5kb"},
        {1152, "1.12kb"},    {1408, "1.38kb"},    {1048575, "1024kb"},  {1048576, "1mb"},
        {5000000, "4.77mb"}, {1u << 30, "1gb"},   {2684354560, "2.5gb"}};
    const auto file = machine.disk.path() / "music/rock/b.mp3";
    for (const auto& [bytes, text] : sizes) {
        std::filesystem::resize_file(file, bytes);
        machine.press("playlistView", 1);
        EXPECT_EQ(machine.shown("fileCountLabel"), std::string("2/3 files - ") + text);
    }
    std::filesystem::remove(file);
    machine.press("playlistView", 1);
    EXPECT_EQ(machine.shown("fileCountLabel"), "2/3 files - 0bytes");
    machine.slowDisk.spans[machine.drive("music/rock")] = 1min;
    machine.press("playlistView", 2);
    EXPECT_EQ(machine.shown("fileCountLabel"), "3/3 files - the disk doesn't answer");
    machine.loop.once(1s, [&] {
        machine.slowDisk.spans.clear();
        machine.press("playlistView", 0);
    });
    machine.press("playlistView", 2);
    EXPECT_EQ(machine.shown("fileCountLabel"), "1/3 files - 5bytes");
}

TEST(MediaList, StartsTheRowThatIsClickedTwice) {
    MediaMachine machine(Lines{"a.mp3", "b.wav", "c.mp3"});
    const auto twice = [&](int row) {
        return machine.answerTo([&] { machine.pressTwice("playlistView", row); });
    };
    EXPECT_EQ(twice(1), "playing:  <b>2</b>.  b (<b>.wav</b>)");
    EXPECT_EQ(machine.setting("play"), "b.wav");
    EXPECT_EQ(machine.trayEntry("playtz"), "played 0 times");
    std::filesystem::remove(machine.disk.path() / "music/rock/a.mp3");
    EXPECT_EQ(twice(0), machine.notFound());
    EXPECT_EQ(machine.answer("'next"), "next:  <b>3</b>.  c") << "b is still the current row";
}

TEST(MediaList, KeepsThePlaceOfTheSongThatItStarts) {
    const std::pair<const char*, std::function<void(MediaMachine&)>> cases[] = {
        {"next:  <b>3</b>.  c", [](MediaMachine& m) { m.press("playlistView", 2); }},
        {"next:  <b>2</b>.  c", [](MediaMachine& m) { m.owner("'listrmv a  "); }},
        {"next:  <b>3</b>.  c", [](MediaMachine& m) { m.owner("'play mp"); }},
        {"next:  <b>2</b>.  b", [](MediaMachine& m) { m.press("nextButton"); }}};
    for (const auto& [next, within] : cases) {
        MediaMachine machine;
        machine.inMessage("", [&, act = within] { act(machine); });
        machine.pressTwice("playlistView", 1);
        EXPECT_EQ(machine.answer("'next"), next);
    }
}

TEST(MediaList, ComesUpByACommandAlsoInSilence) {
    MediaMachine machine;
    machine.work({{"closeButton", ""}, {"'num 2", "playing:  <b>2</b>.  b"}});
    EXPECT_FALSE(machine.mp3s().visible);
    machine.owner("'play ");
    machine.work({{"'media", "viewing media list"}, {"closeButton", ""}});
    EXPECT_EQ(machine.state().masterIndex(), 1) << "the row last started";
    machine.owner("'silent");
    EXPECT_EQ(machine.answer("'media"), "");
    EXPECT_TRUE(machine.mp3s().visible);
}

TEST(MediaList, TakesWhatIsDroppedAnywhereOverItsWindow) {
    MediaMachine m({"a.mp3"});
    m.disk.write("new/one.mp3", "");
    m.disk.write("new/notes.txt", "");
    m.disk.write("new/below/deep.ogg", "");
    const Lines paths{m.drive("new"), m.drive("new/one.mp3")};
    m.run([&] { EXPECT_TRUE(drop(m.mp3s(), paths)); });
    const RowList& rows = m.state().masterList;
    ASSERT_EQ(rows.count(), 3);
    EXPECT_EQ(rows.row(1), makerow("deep", ".ogg", m.drive("new/below")));
    EXPECT_EQ(rows.row(2), makerow("one", ".mp3", m.drive("new")));
    EXPECT_EQ(m.room.told.front(), "added 2 songs, 1 was there");
    EXPECT_EQ(m.player.opened, Lines{});
}

} // namespace larkspin
