// Files that a real mouse drags from another window onto the room and the media window.
#include "platform/qt/file_drops.h"
#include "platform/qt/room/room_desk.h"
#include "platform/qt/windows/qt_windows.h"

#include <QDrag>
#include <QMimeData>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

// A window of another program, from which everything that is grabbed in it is dragged away.
class DragSource : public QWidget {
public:
    explicit DragSource(std::function<QMimeData*()> content) : content_(std::move(content)) {
        setGeometry(0, 0, 100, 100);
        show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(this));
    }

private:
    void mouseMoveEvent(QMouseEvent*) override {
        auto* const drag = new QDrag(this);
        drag->setMimeData(content_());
        drag->exec(Qt::CopyAction);
    }
    std::function<QMimeData*()> content_;
};

struct DroppedFiles : RoomDesk {
    DroppedFiles() { window().setGeometry(300, 50, 500, 400); }
    // Presses in the source, and lets go over the middle of the target: again when nothing comes of
    // it, since a busy machine may be too slow for the hand.
    bool drag(const QWidget& target, const std::function<bool()>& comesOf) {
        const QPoint to = target.mapToGlobal(target.rect().center());
        const QStringList does =
            QString("mousemove 50 50 mousedown 1 sleep 0.1 mousemove 60 60 sleep 0.1 "
                    "mousemove 70 70 sleep 0.1 mousemove %1 %2 sleep 0.2 mouseup 1 sleep 0.5")
                .arg(to.x())
                .arg(to.y())
                .split(' ');
        QProcess hand;
        const bool hasCome = comes([&] {
            if (hand.state() == QProcess::NotRunning && !comesOf())
                hand.start("xdotool", does);
            return comesOf();
        });
        hand.waitForFinished();
        return hasCome;
    }
    bool shows(const std::string& text) {
        return view<Transcript>().toPlainText().contains(QString::fromStdString(text));
    }

    const FileDrops drops{window(), [this](const std::vector<std::string>& paths) {
                              machine.loop.post([this, paths] {
                                  machine.program->bring(paths, BroughtFiles::Then::adding);
                              });
                          }};
};

TEST_F(DroppedFiles, AreTakenAnywhereOverTheWindowsAndNeverForText) {
    InputLine& input = view<InputLine>();
    const QtWindows windows(machine.loop, machine.program->windows());
    Window& media = machine.program->mediaWindow.frame.mp3s;
    media.place.left = media.place.top = 7500; // beside the room
    media.visible = true;
    settle();
    const QWidget* const targets[] = {&view<Transcript>(), &input, &view<PeopleView>(),
                                      windows.widgetOf(media)};
    int number = 0;
    for (const QWidget* const target : targets) {
        const std::string name = "ride" + std::to_string(++number);
        machine.disk.write("new/" + name + " ?.mp3", "song");
        DragSource source([&] {
            auto* const files = new QMimeData;
            files->setUrls({QUrl::fromLocalFile(QString::fromStdString(
                                (machine.disk.path() / "new" / (name + " ?.mp3")).native())),
                            QUrl("smb://share/far.mp3")});
            files->setText("a name");
            return files;
        });
        EXPECT_TRUE(drag(*target, [&] { return shows("added " + name + " ?"); }))
            << target->accessibleName().toStdString();
        EXPECT_TRUE(shows("couldn't open smb://share/far.mp3:  it is no file of this machine"));
        EXPECT_EQ(input.text(), "");
    }
}

TEST_F(DroppedFiles, LeaveDroppedTextToTheLine) {
    DragSource source([] {
        auto* const words = new QMimeData;
        words->setText("'play ride");
        return words;
    });
    InputLine& input = view<InputLine>();
    EXPECT_TRUE(drag(input, [&] { return input.text().startsWith("'play ride"); }));
}

} // namespace
} // namespace larkspin
