// Boxes, questions and file dialogs on the terminal's screen, on a loop that waits.
#include "platform/posix/poll_loop.h"
#include "platform/terminal/windows/screen_dialogs.h"
#include "platform/terminal/windows/window_desk.h"
#include "support/temp_directory.h"

#include <functional>

namespace larkspin {

namespace {

class DialogOnScreen : public testing::Test, protected Desk {
protected:
    DialogOnScreen() : Desk(loop_) {
        for (const char* name : {"rock/one.mp3", "rock/two.WAV", "rock/deep/three.mp3",
                                 "rock/.hidden.mp3", "b:ad?.mp3"})
            disk.write(name, "x");
        stage.pressed();
    }

    // In the middle of the wait for an answer, after what the dialog has to read.
    void meanwhile(const std::function<void()>& hand) {
        loop_.once(1ms, [this, hand] {
            hand();
            stage.refresh();
        });
    }
    std::string drive(const std::string& below) {
        return directories.drivePath((disk.path() / below).native());
    }
    FileQuestion question(const std::string& preset = "") {
        return {.title = "songs",
                .types = {{"songs (*.mp3)", "*.mp3"}, {"all (*.*)", "*.*"}},
                .directory = drive("rock"),
                .preset = preset};
    }
    void tabTo(const std::string& control) {
        for (int tabs = 0; tabs < 10 && stage.keyboard()->focused() != control; ++tabs)
            key(Struck::tab);
    }

    PollLoop loop_;
    TempDirectory disk;
    PosixDirectories directories{disk.path().native()};
    ScreenDialogs dialogs{loop_, stage, directories};
};

} // namespace

TEST_F(DialogOnScreen, ABoxIsReadAndGoesByManyWays) {
    const std::function<void()> ways[] = {
        [&] { key(Struck::enter); },  [&] { type(" "); },           [&] { type("o"); },
        [&] { key(Struck::escape); }, [&] { click(find("[ok]")); }, [&] { click(find("×")); }};
    for (const auto& way : ways) {
        meanwhile([&] {
            find("┌ larkspin ─");
            find("│ some text");
            way();
        });
        dialogs.box("some text");
        EXPECT_EQ(text().find("some text"), std::string::npos);
    }
}

TEST_F(DialogOnScreen, ALongTextIsScrolled) {
    std::string lines;
    for (int each = 100; each < 200; ++each)
        lines += "line " + std::to_string(each) + '\n';
    meanwhile([&] {
        find("line 100");
        tabTo("text");
        key(Struck::end);
        find("line 199");
        key(Struck::escape);
    });
    dialogs.box(lines);
}

TEST_F(DialogOnScreen, AQuestionIsAnswered) {
    const std::pair<std::function<void()>, bool> ways[] = {{[&] { key(Struck::enter); }, true},
                                                           {[&] { type("y"); }, true},
                                                           {[&] { type("n"); }, false},
                                                           {[&] { key(Struck::escape); }, false},
                                                           {[&] {
                                                                key(Struck::right);
                                                                key(Struck::enter);
                                                            },
                                                            false},
                                                           {[&] { click(find("[no]")); }, false}};
    for (const auto& [way, wanted] : ways) {
        meanwhile(way);
        EXPECT_EQ(dialogs.ask("really?"), wanted);
    }
    meanwhile(ways[0].first);
    EXPECT_FALSE(dialogs.ask("really?", Dialogs::Preset::no));
}

TEST_F(DialogOnScreen, ALineIsTyped) {
    const std::pair<std::function<void()>, std::optional<std::string>> ways[] = {
        {[&] { key(Struck::enter); }, "pre\xFFset"},
        {[&] {
             type("é");
             key(Struck::enter);
         },
         "pre\xFFset\u00E9"},
        {[&] {
             take(KeyStroke{.character = U'u', .ctrl = true});
             key(Struck::enter);
         },
         std::nullopt},
        {[&] {
             take(PasteStroke{"a\nb "});
             click(find("[ok]"));
         },
         "pre\xFFsetab "},
        {[&] {
             tabTo("ok");
             take(PasteStroke{"c"});
             key(Struck::enter);
         },
         "pre\xFFsetc"},
        {[&] {
             take(PasteStroke{"\u202Eb"}); // which is seen as another character
             const Cursor at = find("set\uFFFDb");
             click({at.row, at.column + 4});
             type("x");
             key(Struck::enter);
         },
         "pre\xFFset\u202Exb"},
        {[&] { key(Struck::escape); }, std::nullopt}};
    for (const auto& [way, wanted] : ways) {
        meanwhile(way);
        EXPECT_EQ(dialogs.askText({"title", "what?", "pre\xFFset"}), wanted);
    }
}

// The owner may be typing: his Return must not dismiss what he hasn't read.
TEST_F(DialogOnScreen, TakesTheKeyboardOnlyAfterAPress) {
    meanwhile([&] { key(Struck::enter); });
    dialogs.box("first");
    ScreenDialogs others(loop_, stage, directories); // which know of no press
    stage.isLineBegun = [] { return true; };
    meanwhile([&] {
        find("f6 to answer");
        type("o");
        key(Struck::enter);
        find("unasked");
        function(6);
        key(Struck::enter);
    });
    others.box("unasked");
    EXPECT_EQ(line.typed, "o");
}

// A line typed as the program greets him must not end the greeting by its first blank.
TEST_F(DialogOnScreen, WhatPressesNothingBeginsALine) {
    meanwhile([&] {
        type("/o ");
        find("return to answer");
        function(6);
        take(PasteStroke{"pasted"});
        find("return to answer");
        function(6);
        type("o");
    });
    dialogs.box("hello");
    EXPECT_EQ(line.typed, "/o ");
    EXPECT_EQ(line.taken.back(), Stroke(PasteStroke{"pasted"}));
}

TEST_F(DialogOnScreen, NestedOnesAreAnsweredInAnyOrderAndDismissedTogether) {
    bool inner = true;
    meanwhile([&] {
        meanwhile([&] { type("n"); });
        inner = dialogs.ask("inner?");
        EXPECT_NE(text().find("outer?"), std::string::npos);
        type("y");
    });
    EXPECT_TRUE(dialogs.ask("outer?"));
    EXPECT_FALSE(inner);
    meanwhile([&] {
        meanwhile([&] { dialogs.dismissAll(); });
        EXPECT_FALSE(dialogs.ask("inner?"));
        EXPECT_EQ(text().find("?"), std::string::npos);
    });
    EXPECT_FALSE(dialogs.ask("outer?"));
}

TEST_F(DialogOnScreen, FilesAreChosen) {
    const auto rows = [](int count) {
        return std::vector<Struck>(static_cast<std::size_t>(count), Struck::down);
    };
    struct Case {
        std::vector<Struck> keys;
        std::string typed;
        std::vector<Struck> then;
        std::string wanted;
    };
    // The list: the way up, deep, one.mp3.
    const Case cases[] = {
        {rows(2), "", {Struck::enter}, "rock/one.mp3"},
        {{Struck::down, Struck::enter, Struck::down, Struck::enter}, "", {}, "rock/deep/three.mp3"},
        {{Struck::enter, Struck::end, Struck::enter}, "", {}, "b:ad?.mp3"},
        {{}, "new name.mp3", {Struck::enter}, "rock/new name.mp3"},
        {{}, "../x.mp3", {Struck::escape}, ""},
    };
    for (const auto& [keys, typed, then, wanted] : cases) {
        meanwhile([&, keys = keys, typed = typed, then = then] {
            EXPECT_EQ(text().find("hidden"), std::string::npos);
            EXPECT_EQ(text().find("two.WAV"), std::string::npos);
            for (const Struck each : keys)
                key(each);
            type(typed);
            for (const Struck each : then)
                key(each);
        });
        const auto path = dialogs.openFile(question());
        EXPECT_EQ(path.value_or(""), wanted.empty() ? "" : drive(wanted));
    }
}

TEST_F(DialogOnScreen, SeveralFilesTypesAndDirectoriesAreChosen) {
    meanwhile([&] {
        tabTo("types");
        key(Struck::down);
        click(find("one.mp3"));
        find("two.WAV");
        key(Struck::down, true);
        find("2 files");
        click(find("[open]"));
    });
    EXPECT_EQ(dialogs.openFiles(question()),
              (std::vector{drive("rock/one.mp3"), drive("rock/two.WAV")}));
    meanwhile([&] { click(find("[choose]")); });
    EXPECT_EQ(dialogs.openDirectory(question()), drive("rock"));
    meanwhile([&] {
        doubleClick(find("deep"));
        find("deep");
        click(find("[choose]"));
    });
    EXPECT_EQ(dialogs.openDirectory(question()), drive("rock/deep"));
    meanwhile([&] {
        find("old.lst");
        tabTo("typed");
        key(Struck::home);
        type("very ");
        key(Struck::enter);
    });
    EXPECT_EQ(dialogs.saveFile(question("old.lst")), drive("rock") + "\\very old.lst");
    meanwhile([&] {
        tabTo("typed");
        take(PasteStroke{disk.path().native() + "/rock/deep"}); // leads there
        key(Struck::enter);
        find("three.mp3");
        type("/nowhere/at all");
        key(Struck::enter);
    });
    EXPECT_EQ(dialogs.openFile(question()), "c:\\nowhere\\at all");
}

TEST_F(DialogOnScreen, LinksLeadIntoDirectoriesAndBack) {
    std::filesystem::create_directory_symlink("deep", disk.path() / "rock/elsewhere");
    meanwhile([&] {
        doubleClick(find("elsewhere\\"));
        find("three.mp3");
        doubleClick(find(".."));
        doubleClick(find("elsewhere\\"));
        doubleClick(find("three.mp3"));
    });
    EXPECT_EQ(dialogs.openFile(question()), drive("rock/elsewhere/three.mp3"));
}

} // namespace larkspin
