// Files that a real mouse drags from another window onto the room.
#include "app/program.h"
#include "platform/qt/file_drops.h"
#include "platform/qt/room/qt_room.h"
#include "support/patience.h"
#include "support/pretend_irc.h"
#include "support/virtual_machine.h"

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

struct DroppedFiles : testing::Test {
    DroppedFiles() {
        machine.host = &room.rooms.room;
        room.window.setGeometry(300, 50, 500, 400);
        room.show();
        machine.start();
        machine.run([this] { room.open([] {}); });
        drops.emplace(room.window, [this](const std::vector<std::string>& paths) {
            machine.loop.post(
                [this, paths] { machine.program->bring(paths, BroughtFiles::Then::adding); });
        });
    }
    // Presses in the source, and lets go over the middle of the target.
    void drag(const QWidget& target) {
        const QPoint to = target.mapToGlobal(target.rect().center());
        const QString x = QString::number(to.x()), y = QString::number(to.y());
        QProcess::startDetached("xdotool", {"mousemove", "50",    "50",        "mousedown", "1",
                                            "sleep",     "0.1",   "mousemove", "60",        "60",
                                            "sleep",     "0.1",   "mousemove", "70",        "70",
                                            "sleep",     "0.1",   "mousemove", x,           y,
                                            "sleep",     "0.1",   "mousemove", "--",        x,
                                            y,           "sleep", "0.2",       "mouseup",   "1"});
    }
    bool shows(const std::string& text) {
        return QTest::qWaitFor(
            [&] {
                machine.advance(1ms);
                return room.window.findChild<Transcript*>()->toPlainText().contains(
                    QString::fromStdString(text));
            },
            patienceInMilliseconds);
    }

    VirtualMachine machine;
    PretendIrc server{machine.loop};
    QtRoom room{machine.loop,
                machine.lines,
                lent({&server}),
                machine.kept,
                DataDirectory(machine.drive("data")),
                "Owner"};
    std::optional<FileDrops> drops;
};

TEST_F(DroppedFiles, AreTakenAnywhereOverTheRoomAndNeverForText) {
    InputLine& input = *room.window.findChild<InputLine*>();
    const QWidget* const targets[] = {room.window.findChild<Transcript*>(), &input,
                                      room.window.findChild<PeopleView*>()};
    int number = 0;
    for (const QWidget* const target : targets) {
        const std::string name = "ride" + std::to_string(++number);
        machine.disk.write("new/" + name + " ?.mp3", "song");
        DragSource source([&] {
            auto* const files = new QMimeData;
            files->setUrls({QUrl::fromLocalFile(QString::fromStdString(
                (machine.disk.path() / "new" / (name + " ?.mp3")).native()))});
            files->setText("a name");
            return files;
        });
        drag(*target);
        EXPECT_TRUE(shows("added " + name + " ?")) << target->accessibleName().toStdString();
        EXPECT_EQ(input.text(), "");
    }
}

TEST_F(DroppedFiles, LeaveDroppedTextToTheLine) {
    DragSource source([] {
        auto* const words = new QMimeData;
        words->setText("'play ride");
        return words;
    });
    InputLine& input = *room.window.findChild<InputLine*>();
    drag(input);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return input.text() == "'play ride"; }, patienceInMilliseconds));
}

} // namespace
} // namespace larkspin
