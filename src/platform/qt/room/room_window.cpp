#include "platform/qt/room/room_window.h"

#include "platform/qt/looks.h"
#include "platform/qt/places.h"
#include "platform/qt/qt_text.h"
#include "text/number.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

constexpr int gap = 6; // in pixels, as the sizes below
constexpr QSize firstSize(700, 460), leastSize(320, 200);
constexpr int peopleWidth = 160;
constexpr std::size_t mostReadBefore = 300; // lines that are shown again
constexpr QSize frameRoom(4, 40);           // for the frame of a window manager

} // namespace

RoomWindow::RoomWindow(EventLoop& loop, const ShownRoom& room, const Conversations& conversations,
                       LineHistory& history)
    : loop_(loop), room_(room), conversations_(conversations), newLines_(conversations),
      said_(*new Transcript),
      people_(*new PeopleView({.people = [&room]() -> const RowList& { return room.people(); },
                               .isIgnored = [&room](auto name) { return room.isIgnored(name); }})),
      input_(*new InputLine(history)), count_(*new QLabel), ownName_(*new QLabel),
      halves_(*new QSplitter), rows_(*new QVBoxLayout(this)) {
    layOut();
    const QPointer<RoomWindow> window(this); // which may have gone when an event comes
    // A line acts in an event of its own: what it does may wait, and a callback of Qt's can't.
    input_.onBegin([this] { begun_ = conversations_.begun(); });
    input_.onLine([this, window](std::string line) {
        loop_.post([window, line = std::move(line), begun = begun_] {
            if (window)
                window->take_(line, begun);
            if (window)
                window->input_.goOn();
        });
    });
    input_.onPage([this](int pages) { said_.scrollPage(pages); });
    connect(&halves_, &QSplitter::splitterMoved, this, [this] { placeChanged_(); });
    loop_.beforeSleep([window] {
        if (window)
            window->showNew();
    });
}

// What is said on the left, the people on the right, and the line to type in below both.
void RoomWindow::layOut() {
    auto* const right = new QWidget;
    auto* const rightColumn = new QVBoxLayout(right);
    rightColumn->setContentsMargins(0, 0, 0, 0);
    rightColumn->addWidget(&count_);
    rightColumn->addWidget(&people_);
    halves_.addWidget(&said_);
    halves_.addWidget(right);
    halves_.setStretchFactor(0, 1);
    halves_.setSizes({firstSize.width() - peopleWidth, peopleWidth});
    halves_.setChildrenCollapsible(false);
    halves_.setHandleWidth(gap);
    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(&ownName_);
    bottom->addWidget(&input_);
    rows_.setContentsMargins(gap, gap, gap, gap);
    rows_.setSpacing(gap);
    rows_.addWidget(&halves_, 1);
    rows_.addLayout(bottom);

    for (QLabel* label : {&count_, &ownName_})
        label->setTextFormat(Qt::PlainText);
    said_.setAccessibleName("what is said");
    people_.setAccessibleName("people in the room");
    input_.setAccessibleName("line to say");
    setFont(fontOf({.family = "Arial", .points = 10}));
    setMinimumSize(leastSize);
    resize(firstSize);
    setTabOrder(&said_, &people_);
    setTabOrder(&people_, &input_);
    input_.setFocus();
}

void RoomWindow::addAbove(QWidget& widget) {
    rows_.insertWidget(0, &widget);
}

void RoomWindow::addHint(QWidget& widget) {
    rows_.insertWidget(rows_.indexOf(&halves_) + 1, &widget);
}

void RoomWindow::addBelow(QWidget& widget) {
    rows_.addWidget(&widget);
}

// On a small screen, or one that shows everything larger, the line to type in would lie outside of
// it.
void RoomWindow::fitScreen() {
    if (isMaximized() || isFullScreen())
        return;
    const QRect area = screen()->availableGeometry();
    resize(size().boundedTo(area.size() - frameRoom));
    const QPoint corner = cornerWithin(area, QRect(pos(), size() + frameRoom));
    if (testAttribute(Qt::WA_Moved) && corner != pos())
        move(corner);
}

// Qt draws in a later turn of the loop. The empty task makes sure that there is one.
void RoomWindow::showNew() {
    takeNew();
    const bool wasShown = isRoomShown_;
    if (!wasShown)
        showRoom();
    if (said_.showNew() || !wasShown)
        loop_.post([] {});
}

void RoomWindow::takeNew() {
    newLines_.take(
        {.entered = [this](const Conversation& conversation,
                           bool isAgain) { enter(conversation, isAgain); },
         .leftOut = [this](int lines) { said_.tell(counted(lines, "line") + " before these"); },
         .line = [this](const KeptLine& line) { showLine(line); },
         .elsewhere =
             [this](const Conversation& conversation, const KeptLine& line) {
                 said_.tell(wordsFromElsewhere(conversations_, conversation, line),
                            stampOf(line, loop_));
             }});
}

// Shows what the owner has read there before, and then where he is. What he hasn't read comes after
// that.
void RoomWindow::enter(const Conversation& conversation, bool isAgain) {
    said_.begin();
    std::vector<const KeptLine*> read; // the last one first
    const auto& lines = conversation.lines();
    for (auto line = lines.rbegin();
         !isAgain && line != lines.rend() && read.size() < mostReadBefore; ++line)
        if (line->number <= conversation.readBefore())
            read.push_back(&*line);
    for (auto line = read.rbegin(); line != read.rend(); ++line)
        showLine(**line);
    said_.tell(wordsOfEntering(conversations_, conversation));
    roomChanged();
}

void RoomWindow::showLine(const KeptLine& line) {
    if (line.kind == KeptLine::Kind::said)
        said_.say(line.speaker, line.text, stampOf(line, loop_));
    else
        said_.tell(wordsOf(line), stampOf(line, loop_));
    // People come and go by such lines.
    isRoomShown_ = isRoomShown_ && !line.isProgramsWord();
}

void RoomWindow::showRoom() {
    isRoomShown_ = true;
    const Conversation& front = conversations_.front();
    setWindowTitle("larkspin - " + toQt(front.isAtHome() ? visibleName(room_.name())
                                                         : conversations_.fullName(front)));
    const int count = room_.people().count();
    count_.setText(toQt(counted(count, "person", "people")));
    ownName_.setText(toQt(visibleName(prompt_.empty() ? room_.ownName() : prompt_)) + ':');
    people_.refresh();
}

void RoomWindow::askPassword(const std::string& prompt, std::function<void(std::string)> answered) {
    prompt_ = prompt;
    roomChanged();
    const QPointer<RoomWindow> window(this);
    input_.takeSecret([this, window, answered = std::move(answered)](std::string line) {
        prompt_.clear();
        roomChanged();
        // The answer goes out in an event of its own, by which time the window may be gone.
        loop_.post([window, answered, line = std::move(line)] {
            if (window)
                answered(line);
        });
    });
}

void RoomWindow::dismissPassword() {
    prompt_.clear();
    roomChanged();
    input_.dropSecret();
}

void RoomWindow::offer(const std::string& line) {
    const QString text = toQt(line);
    input_.put({.text = text, .cursor = static_cast<int>(text.size())});
}

void RoomWindow::bringForward() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    input_.setFocus();
}

// The window itself stays, since without it the owner couldn't talk to the program.
void RoomWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    close_();
}

bool RoomWindow::event(QEvent* event) {
    const bool done = QWidget::event(event);
    const auto type = event->type();
    if (type == QEvent::Move || type == QEvent::Resize || type == QEvent::WindowStateChange)
        placeChanged_();
    return done;
}

QRegion RoomWindow::text() const {
    const auto seen = [](const QWidget& part) {
        return QRect(part.mapToGlobal(QPoint()), part.size());
    };
    return QRegion(seen(said_)) + seen(input_);
}

std::string RoomWindow::place() const {
    return saveGeometry().toBase64().toStdString() + '\n' +
           halves_.saveState().toBase64().toStdString() + '\n';
}

void RoomWindow::restorePlace(const std::string& place) {
    const QList<QByteArray> lines = QByteArray::fromStdString(place).split('\n');
    restoreGeometry(QByteArray::fromBase64(lines.value(0)));
    halves_.restoreState(QByteArray::fromBase64(lines.value(1)));
    // A window that was minimized when the last run ended opens like any other.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    fitScreen();
}

} // namespace larkspin
