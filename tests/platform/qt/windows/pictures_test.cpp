// What is drawn, sampled at a few places.
#include "platform/qt/icon.h"
#include "platform/qt/looks.h"
#include "platform/qt/windows/real_mouse.h"
#include "text/row_list.h"

#include <QApplication>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QStyle>
#include <gtest/gtest.h>

namespace larkspin {

namespace {

// "#" is the colour in front, "." the ground, "-" what outlines have, "+" another
// one, ":" another dark one.
std::string samples(QWidget& widget, int columns, int rows, int margin = 0) {
    const QImage drawn = widget.grab().toImage();
    const int width = drawn.width() - 1 - 2 * margin, height = drawn.height() - 1 - 2 * margin;
    const QPalette& colors = widget.palette();
    std::string seen;
    for (int row = 0; row < rows; ++row) {
        seen += row > 0 ? "/" : "";
        for (int column = 0; column < columns; ++column) {
            const QColor color = drawn.pixelColor(margin + column * width / (columns - 1),
                                                  margin + row * height / (rows - 1));
            seen += color == colors.color(QPalette::ButtonText) ? '#'
                    : color == colors.color(QPalette::Button)   ? '.'
                    : color == dimmed(colors)                   ? '-'
                    : color.value() < 80                        ? ':'
                                                                : '+';
        }
    }
    return seen;
}

} // namespace

TEST(Pictures, ShowWhatStandsOnAWindow) {
    Desk desk;
    for (const char* const other : {"prevButton", "volumeCaption"})
        desk.window("mp3s").control(other).background = 0x808080;
    desk.window("mp3s").background = 0x400000;
    QWidget& window = desk.show("mp3s");
    desk.state().playlistView.choose(0);
    desk.owner("'volume 50");
    desk.settle();
    const std::pair<const char*, const char*> pictures[] = {
        {"prevButton", "-------/-.+...-/-.###.-/-.+...-/-------"},
        {"playButton", "-------/-.:...-/-.+##.-/-.:...-/-------"},
        {"pauseButton", "-------/-.+:+.-/-.+:#.-/-.+:+.-/-------"},
        {"nextButton", "-------/-.:.+.-/-.##+.-/-.:.+.-/-------"},
        {"openButton", "-------/-.:...-/-.+++:-/-.:::.-/-------"},
        {"HScroll2", "......./...+.../.::+::./...+.../......."}};
    for (const auto& [name, picture] : pictures)
        EXPECT_EQ(samples(desk.control("mp3s", name), 7, 5, 1), picture) << name;
    EXPECT_EQ(samples(desk.control("mp3s", "closeButton"), 7, 3), "......./...#.../-------");
    EXPECT_EQ(samples(desk.control("mp3s", "mediaCaption"), 2, 3), "../../--");
    EXPECT_EQ(samples(desk.control("mp3s", "volumeCaption"), 2, 3), "../../..");
    EXPECT_EQ(samples(desk.control("mp3s", "playlistView"), 3, 9),
              ".../.#./.#./.../.../.../.../.../...");
    EXPECT_NE(samples(desk.control("mp3s", "playlistView"), 99, 30).find('+'), std::string::npos);
    EXPECT_EQ(samples(window, 3, 3), "---/-#-/---");
}

TEST(Pictures, ShowTheStateOfAButton) {
    Desk desk;
    QWidget& window = desk.show("mp3s");
    window.activateWindow();
    ASSERT_TRUE(comes(desk, [&] { return window.isActiveWindow(); }));
    auto& button = desk.control("mp3s", "nextButton");
    const std::pair<const char*, std::function<void()>> states[] = {
        {"-----/-:#+-/-----", [&] { button.setAttribute(Qt::WA_UnderMouse); }},
        {"-----/-#.+-/-----", [&] { QTest::mousePress(&button, Qt::LeftButton); }},
        {"-----/-:#+-/-----", [&] { QTest::mouseRelease(&button, Qt::LeftButton); }},
        {"-----/-.#:-/-----", [&] { button.setAttribute(Qt::WA_UnderMouse, false); }},
        {"#####/#.#:#/#####", [&] { button.setFocus(Qt::TabFocusReason); }},
        {"-----/-.#:-/-----", [&] { button.clearFocus(), button.setFocus(Qt::OtherFocusReason); }},
        {"#####/#.#:#/#####",
         [&] { button.clearFocus(), button.setFocus(Qt::BacktabFocusReason); }}};
    for (const auto& [picture, change] : states) {
        change();
        EXPECT_EQ(samples(button, 5, 3, 1), picture) << &picture - &states[0].first;
    }
}

TEST(Pictures, ShowWhatDialogsAreMadeOf) {
    QWidget page;
    QComboBox combo(&page);
    QPushButton button(&page), down(&page);
    down.setDown(true);
    QLineEdit line(&page);
    QSpinBox spin(&page);
    QFrame plain(&page), box(&page), thick(&page);
    plain.setFrameStyle(int{QFrame::Box} | int{QFrame::Plain});
    for (QFrame* frame : {&box, &thick})
        frame->setFrameStyle(int{QFrame::Box} | int{QFrame::Sunken});
    thick.setLineWidth(2);
    QMenu menu;
    menu.addSeparator();
    const std::pair<QWidget*, const char*> pictures[] = {
        {&combo, "-------/-.....-/-..++.-/-.....-/-------"},
        {&button, "-------/-.....-/-.....-/-.....-/-------"},
        {&down, "-------/-:::::-/-:::::-/-:::::-/-------"},
        {&line, "-------/-.....-/-.....-/-.....-/-------"},
        {&spin, "-------/-.....-/-.....-/-...:.-/-------"},
        {&plain, "......./......./......./......./......."},
        {&box, "-------/-.....-/-.....-/-.....-/-------"},
        {&thick, ".-----./......./......./......./......."},
        {&menu, "-------/-.....-/-.....-/-.....-/-------"}};
    for (const auto& [widget, picture] : pictures) {
        widget->resize(27, 19);
        EXPECT_EQ(samples(*widget, 7, 5), picture) << widget->metaObject()->className();
    }
    for (const auto& [sign, color] : {std::pair(QStyle::SP_MessageBoxInformation, "#00ffff"),
                                      {QStyle::SP_MessageBoxCritical, "#ff0000"}}) {
        const QImage drawn = QApplication::style()->standardIcon(sign).pixmap(144).toImage();
        EXPECT_EQ(drawn.pixelColor(0, 0).alpha(), 0);
        for (const QPoint& at : {QPoint(18, 72), QPoint(72, 92), QPoint(68, 92)})
            EXPECT_EQ(drawn.pixelColor(at).name().toStdString(), color) << at.x();
    }
    const QImage icon = programIcon().pixmap(32).toImage();
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(icon.pixelColor(16, 6).alpha(), 255);
}

TEST(Pictures, ShowWhereAScrollBarStandsAndTakeItByItsThumb) {
    const std::tuple<int, int, int, const char*> clicks[] = {// up to, click at, value
                                                             {0, 10, 0, ":::::::"},
                                                             {80, 180, 20, "::+::::"},
                                                             {80, 10, 0, ":+:::::"}};
    for (const bool lies : {true, false}) {
        QWidget page;
        QScrollBar bar(lies ? Qt::Horizontal : Qt::Vertical, &page);
        bar.resize(lies ? QSize(200, 12) : QSize(12, 200));
        bar.setPageStep(20);
        page.show();
        for (const auto& [most, place, value, picture] : clicks) {
            bar.setRange(0, most);
            QTest::mouseClick(&bar, Qt::LeftButton, {}, {lies ? place : 6, lies ? 6 : place});
            EXPECT_EQ(bar.value(), value);
            const std::string seen = samples(bar, lies ? 7 : 3, lies ? 3 : 7);
            for (std::size_t at = 0; at < 7; ++at)
                EXPECT_EQ(seen[lies ? std::size_t{8} + at : 1 + 4 * at], picture[at]) << at;
        }
        QTest::mousePress(&bar, Qt::LeftButton, {}, {6, 6});
        QTest::mouseMove(&bar, {190, 190});
        EXPECT_EQ(bar.value(), 80);
    }
}

} // namespace larkspin
