// The dialogs of the room's window, by keys alone.
#include "platform/qt/room/connect_dialog.h"
#include "platform/qt/room/preferences_dialog.h"
#include "platform/qt/room/room_desk.h"
#include "platform/qt/room/room_guide.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>

namespace larkspin {
namespace {

struct RoomDialogsTest : RoomDesk {
    RoomDialogsTest() { settle(); }
    // From the menu, as the owner opens it.
    template <typename Dialog> Dialog& opened(const char* entry) {
        QTest::keyClick(&view<InputLine>(), Qt::Key_R, Qt::AltModifier);
        const auto menu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
        if (!comes([&] { return menu() != nullptr; }))
            std::abort();
        for (QAction* const each : menu()->actions())
            if (each->text() == entry)
                menu()->setActiveAction(each);
        QTest::keyClick(menu(), Qt::Key_Return);
        EXPECT_TRUE(comes([] {
            auto* const dialog = QApplication::activeWindow();
            return dynamic_cast<Dialog*>(dialog) && dialog->focusWidget();
        })) << entry;
        return dynamic_cast<Dialog&>(*QApplication::activeWindow());
    }
    // Goes to the field whose label has that letter, and types in it.
    void fill(QWidget& dialog, Qt::Key letter, const char* text = "") {
        QTest::keyClick(&dialog, letter, Qt::AltModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
        settle();
    }
    // Qt lets a box that is reached by its letter look pressed for a moment.
    void toggle(QWidget& dialog, const char* text, Qt::Key letter) {
        for (QCheckBox* const each : dialog.findChildren<QCheckBox*>())
            if (each->text().remove('&').startsWith(text)) {
                const bool was = each->isChecked();
                QTest::keyClick(&dialog, letter, Qt::AltModifier);
                EXPECT_TRUE(comes([&] { return each->isChecked() != was; })) << text;
            }
    }
    static void key(QWidget& dialog, Qt::Key key) { QTest::keyClick(dialog.focusWidget(), key); }
    template <typename Field> static std::string nameless(const QWidget& dialog) {
        for (const Field* const each : dialog.findChildren<Field*>())
            if (each->isVisible() && each->focusPolicy() & Qt::TabFocus &&
                !qobject_cast<QAbstractSpinBox*>(each->parentWidget())) {
                QAccessibleInterface* const told =
                    QAccessible::queryAccessibleInterface(const_cast<Field*>(each));
                if (told->text(QAccessible::Name).isEmpty())
                    return each->metaObject()->className();
            }
        return "";
    }

    RoomGuide guide{machine.loop, *room, *machine.program, [] {}, ""};
};

TEST_F(RoomDialogsTest, LeadToANetworkByKeysAlone) {
    auto& dialog = opened<ConnectDialog>("connect...");
    EXPECT_EQ(nameless<QWidget>(dialog), "");
    key(dialog, Qt::Key_Return);
    settle();
    EXPECT_TRUE(dialog.isVisible()) << "it lacks a server";
    EXPECT_EQ(server.opened, 0);
    fill(dialog, Qt::Key_S, "irc.test");
    toggle(dialog, "encrypted", Qt::Key_E); // not encrypted, and the port follows
    fill(dialog, Qt::Key_R, "#music #den");
    fill(dialog, Qt::Key_A, "jo");
    fill(dialog, Qt::Key_D, "sesame");
    toggle(dialog, "keep", Qt::Key_K);
    key(dialog, Qt::Key_Return);
    EXPECT_TRUE(comes([this] { return !room->rooms.conversations.front().isAtHome(); }));
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(server.to.host, "irc.test");
    EXPECT_EQ(server.to.port, 6667);
    EXPECT_FALSE(server.to.encrypted);
    EXPECT_EQ(server.nick, "Owner");
    const IrcAccount& account = room->rooms.networks.named("irc.test")->file.account();
    EXPECT_EQ(account.user, "jo");
    EXPECT_EQ(account.password, "sesame");
    EXPECT_TRUE(account.keepsPassword);

    auto& again = opened<ConnectDialog>("connect...");
    EXPECT_EQ(&again, &dialog);
    fill(again, Qt::Key_W);
    key(again, Qt::Key_Down); // the network that is known
    EXPECT_TRUE(comes([&] { return again.findChild<QSpinBox*>()->value() == 6667; }))
        << again.findChild<QComboBox*>()->currentText().toStdString();
    key(again, Qt::Key_Escape);
    EXPECT_TRUE(comes([&] { return !again.isVisible(); }));
}

TEST_F(RoomDialogsTest, ChangePreferencesAtOnce) {
    preferences().lookIn({.music = "c:\\desk", .find = [](std::string_view typed) {
                              return typed == "~/there" ? std::optional<std::string>("c:\\there")
                                                        : std::nullopt;
                          }});
    auto& dialog = opened<PreferencesDialog>("preferences...");
    EXPECT_EQ(nameless<QWidget>(dialog), "");
    fill(dialog, Qt::Key_T);
    key(dialog, Qt::Key_Up);
    EXPECT_TRUE(comes([this] { return preferences().textSize() == 110; }));
    toggle(dialog, "show when", Qt::Key_W);
    toggle(dialog, "give each name", Qt::Key_N);
    toggle(dialog, "the desktop tells", Qt::Key_Y);
    toggle(dialog, "write what", Qt::Key_D);
    EXPECT_FALSE(preferences().showsStamps());
    EXPECT_TRUE(preferences().colorsNames());
    EXPECT_FALSE(preferences().notifies());
    EXPECT_TRUE(room->rooms.log.isOn());
    fill(dialog, Qt::Key_C);
    key(dialog, Qt::Key_Down);
    EXPECT_TRUE(comes([this] { return preferences().colors() == RoomColors::light; }));
    fill(dialog, Qt::Key_R);
    key(dialog, Qt::Key_Down);
    EXPECT_TRUE(comes([this] { return preferences().closing() == RoomClosing::tray; }));
    const auto folder = [&](const char* typed) {
        fill(dialog, Qt::Key_M);
        qobject_cast<QLineEdit*>(dialog.focusWidget())->selectAll();
        QTest::keyClicks(dialog.focusWidget(), typed);
        key(dialog, Qt::Key_Return);
        settle();
    };
    folder("~/nowhere");
    EXPECT_EQ(preferences().musicFolder(), "c:\\desk");
    folder("~/there");
    EXPECT_EQ(preferences().musicFolder(), "c:\\there");
    machine.run([this] { room->words.run("/textsize 150"); });
    EXPECT_TRUE(comes([&] { return dialog.findChild<QSpinBox*>()->value() == 150; }));
    key(dialog, Qt::Key_Escape);
    EXPECT_TRUE(comes([&] { return !dialog.isVisible(); }));
}

} // namespace
} // namespace larkspin
