// Boxes, questions and file dialogs as the owner answers them by keyboard.
#include "host/link_opening.h"
#include "platform/posix/drive_paths.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_loop.h"
#include "support/qt_application.h"
#include "support/temp_directory.h"

#include <QDialog>
#include <QLabel>
#include <QProcess>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>
#include <utility>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct QtDialogsTest : testing::Test {
    // Types this into the dialog that will be open, and ends with that key.
    void answer(const std::string& typed, Qt::Key last) {
        dialogs.ownerPresses(); // so that it takes the keys
        look_ = loop.every(10ms, [=, this] {
            const auto windows = QApplication::topLevelWidgets();
            const auto found = std::ranges::find_if(windows, [](QWidget* window) {
                return window->isActiveWindow() && qobject_cast<QDialog*>(window);
            });
            if (found == windows.end() || !(*found)->focusWidget())
                return;
            loop.cancel(std::exchange(look_, TimerId::none));
            for (QLabel* label : (*found)->findChildren<QLabel*>())
                shown += label->text().toStdString() + '\n';
            title = (*found)->windowTitle().toStdString();
            QProcess xprop; // what a window manager knows of it
            xprop.start("xprop",
                        {"-display", QString::fromStdString(startQt()), "-id",
                         QString::number((*found)->winId()), "_NET_WM_STATE", "WM_TRANSIENT_FOR"});
            xprop.waitForFinished();
            managed = xprop.readAllStandardOutput().toStdString();
            QTest::keyClicks((*found)->focusWidget(), QString::fromStdString(typed));
            QTest::keyClick((*found)->focusWidget(), last);
        });
    }
    std::string drive(const std::string& name) const {
        return drivePath((disk.path() / name).native());
    }
    FileQuestion question() const {
        return {.title = "which?",
                .types = {{"songs (*.mp3)", "*.mp3;*.wav"}},
                .directory = drivePath(disk.path().native())};
    }

    TempDirectory disk;
    const std::unique_ptr<QtLoop> made = (startQt(), std::make_unique<QtLoop>());
    QtLoop& loop = *made;
    QtDialogs dialogs{loop};
    std::string title, shown, managed;

private:
    TimerId look_ = TimerId::none;
};

TEST_F(QtDialogsTest, EventsRunWhileABoxIsOpenAndMarkupIsText) {
    int ticks = 0; // it is closed by the last of them alone
    loop.every(1ms, [&] {
        if (++ticks == 20)
            answer("", Qt::Key_Escape);
    });
    dialogs.ownerPresses();
    dialogs.titledBox("news", "<b>bold</b> & more");
    EXPECT_GE(ticks, 20);
    EXPECT_EQ(title, "news");
    EXPECT_NE(shown.find("<b>bold</b> & more\n"), std::string::npos) << shown;
    answer("", Qt::Key_Return);
    dialogs.stopBox("no");
    EXPECT_EQ(title, "larkspin");
}

TEST_F(QtDialogsTest, AQuestionIsAnsweredByKey) {
    for (const auto& [key, yes] : {std::pair(Qt::Key_Return, true), {Qt::Key_Escape, false}}) {
        answer("", key);
        EXPECT_EQ(dialogs.ask("delete it?"), yes);
    }
    std::string opened;
    LinkOpening links(dialogs, [&](const std::string& address) { opened += address; });
    for (const auto& [key, address] :
         {std::pair(Qt::Key_Return, ""), {Qt::Key_Escape, ""}, {Qt::Key_Y, "http://a.b"}}) {
        answer("", key);
        links.open("http://a.b");
        EXPECT_EQ(opened, address) << "a Return may have been meant for a line";
    }
}

TEST_F(QtDialogsTest, ATextIsTypedOverThePreset) {
    const std::optional<std::string> none;
    const TextQuestion preset{.title = "notes", .prompt = "what?", .preset = "old"};
    answer("new", Qt::Key_Return);
    EXPECT_EQ(dialogs.askText(preset), "new");
    answer("", Qt::Key_Return);
    EXPECT_EQ(dialogs.askText(preset), "old");
    answer("new", Qt::Key_Escape);
    EXPECT_EQ(dialogs.askText(preset), none);
    answer("", Qt::Key_Return);
    EXPECT_EQ(dialogs.askText({.title = "notes", .prompt = "what?"}), none);
}

TEST_F(QtDialogsTest, ABoxGoesWithTheMainWindowInTheTaskBarWhileThatIsInSight) {
    QWidget main;
    dialogs.belongTo(main);
    for (const bool isSeen : {true, false}) {
        main.setVisible(isSeen);
        answer("", Qt::Key_Return);
        dialogs.box("news");
        const std::string of = QString::asprintf("window id # 0x%llx", main.winId()).toStdString();
        EXPECT_EQ(managed.find(of) != managed.npos, isSeen) << managed;
        EXPECT_EQ(managed.find("SKIP_TASKBAR") != managed.npos, isSeen) << managed;
    }
}

TEST_F(QtDialogsTest, AllThatIsOpenIsDismissedTogether) {
    const auto visible = [] {
        const auto windows = QApplication::topLevelWidgets();
        return std::ranges::count_if(windows, [](QWidget* window) {
            return window->isVisible() && qobject_cast<QDialog*>(window);
        });
    };
    loop.post([&] { EXPECT_FALSE(dialogs.ask("delete it?")); });
    loop.post([&] { EXPECT_EQ(dialogs.saveFile(question()), std::nullopt); });
    const TimerId look = loop.every(10ms, [&] {
        if (visible() < 3)
            return;
        dialogs.dismissAll();
        EXPECT_EQ(visible(), 0);
    });
    EXPECT_EQ(dialogs.askText({.title = "notes", .prompt = "what?", .preset = "old"}),
              std::nullopt);
    loop.cancel(look);
}

TEST_F(QtDialogsTest, NamesAreShownAsTheyAreAndKeepTheirBytes) {
    const TextQuestion rename{
        .title = "c\uF03Al", .prompt = "a\uF03F & b", .preset = "\xE9: \uF03F"};
    answer("", Qt::Key_Return);
    EXPECT_EQ(dialogs.askText(rename), rename.preset);
    EXPECT_EQ(title, "c:l");
    EXPECT_NE(shown.find("a? && b\n"), std::string::npos)
        << "as a label with keys has it " << shown;
    answer("", Qt::Key_Return);
    dialogs.box("b\uF02A");
    EXPECT_NE(shown.find("b*\n"), std::string::npos) << shown;
    FileQuestion save = question();
    save.preset = "\xE9\uF03F.lkl";
    answer("", Qt::Key_Return);
    EXPECT_EQ(dialogs.saveFile(save), save.directory + '\\' + save.preset);
}

TEST_F(QtDialogsTest, FilesAndDirectoriesComeAsDrivePaths) {
    for (const char* const name : {"a.mp3", "b: c.mp3", "d/e.mp3"})
        disk.write(name, "");
    answer("a.mp3", Qt::Key_Return);
    EXPECT_EQ(dialogs.openFile(question()), drive("a.mp3"));
    EXPECT_EQ(title, "which?");
    answer(R"("a.mp3" "b: c.mp3")", Qt::Key_Return);
    EXPECT_EQ(dialogs.openFiles(question()),
              (std::vector<std::string>{drive("a.mp3"), drive("b: c.mp3")}));
    answer("a.mp3", Qt::Key_Return);
    EXPECT_EQ(dialogs.saveFile(question()), drive("a.mp3"));
    answer("d", Qt::Key_Return);
    EXPECT_EQ(dialogs.openDirectory({.title = "which?", .directory = question().directory}),
              drive("d"));
    answer("a.mp3", Qt::Key_Escape);
    EXPECT_EQ(dialogs.openFiles(question()), std::vector<std::string>());
}

} // namespace
} // namespace larkspin
