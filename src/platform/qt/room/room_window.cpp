#include "platform/qt/room/room_window.h"

#include "host/link_opening.h"
#include "platform/qt/attention.h"
#include "platform/qt/looks.h"
#include "platform/qt/places.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/room/room_keys.h"
#include "text/number.h"
#include "text/row_list.h"
#include "text/visible.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCloseEvent>
#include <QCursor>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

namespace larkspin {

namespace {

constexpr int gap = 6; // in pixels, as the sizes below
constexpr QSize firstSize(860, 540), leastSize(320, 200);
constexpr int roomsWidth = 150, peopleWidth = 160;
constexpr int leastSaid = 180, leastBeside = 55; // of their widths
constexpr QSize frameRoom(4, 40);                // for the frame of a window manager
constexpr int besideRoom = 308; // for the windows that come up beside it, with a gap

// Called by its title. Qt would tell it as a mere part of a window.
QAccessibleInterface* roomAloud(const QString&, QObject* object) {
    auto* const window = dynamic_cast<RoomWindow*>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

} // namespace

RoomWindow::RoomWindow(EventLoop& loop, const ShownRoom& room, const Conversations& conversations,
                       LineHistory& history)
    : loop_(loop), room_(room), conversations_(conversations),
      rooms_(*new RoomsView(conversations)),
      view_(*new ConversationView(loop, room, conversations)),
      people_(*new PeopleView({.people = [&room] { return peopleRows(room); },
                               .isIgnored = [&room](auto name) { return room.isIgnored(name); }})),
      input_(*new InputLine(history)), count_(*new QLabel), ownName_(*new QLabel),
      sides_(*new QSplitter), halves_(*new QSplitter), rows_(*new QVBoxLayout(this)),
      calls_(conversations) {
    QAccessible::installFactory(&roomAloud);
    layOut();
    takeLines();
    takeRoomKeys(*this, conversations,
                 {.goTo = [this](const Conversation* conversation) { goTo(conversation); },
                  .toEnd = [this] { view_.toEnd(); },
                  .showLinks = [this] { showLinks(); }});
    loop_.beforeSleep([window = QPointer(this)] {
        if (window)
            window->showNew();
    });
}

// The rooms on the left, then what is said, the people on the right, and the line to type in below
// all.
void RoomWindow::layOut() {
    auto* const right = new QWidget;
    auto* const rightColumn = new QVBoxLayout(right);
    rightColumn->setContentsMargins(0, 0, 0, 0);
    rightColumn->setSpacing(ConversationView::underHead);
    rightColumn->addWidget(&count_);
    rightColumn->addWidget(&people_);
    halves_.addWidget(&view_);
    halves_.addWidget(right);
    halves_.setSizes({firstSize.width() - peopleWidth, peopleWidth});
    sides_.addWidget(&rooms_);
    sides_.addWidget(&halves_);
    sides_.setStretchFactor(1, 1);
    sides_.setSizes({roomsWidth, firstSize.width() - roomsWidth});
    halves_.setStretchFactor(0, 1);
    view_.setMinimumWidth(leastSaid); // in a narrow window it has more than those beside it
    for (QWidget* const beside : {static_cast<QWidget*>(&rooms_), right})
        beside->setMinimumWidth(leastBeside);
    for (QSplitter* const splitter : {&sides_, &halves_}) {
        splitter->setChildrenCollapsible(false);
        splitter->setHandleWidth(gap);
    }
    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(&ownName_);
    bottom->addWidget(&input_);
    rows_.setContentsMargins(gap, gap, gap, gap);
    rows_.setSpacing(gap);
    rows_.addWidget(&sides_, 1);
    rows_.addLayout(bottom);

    for (QLabel* label : {&count_, &ownName_})
        label->setTextFormat(Qt::PlainText);
    people_.setAccessibleName("people in the room");
    input_.setAccessibleName("line to say");
    setFont(fontOf({.family = "Arial", .points = 10}));
    setMinimumSize(leastSize);
    resize(firstSize);
    rooms_.hide();
    setTabOrder(&rooms_, &view_.said());
    setTabOrder(&view_.said(), &people_);
    setTabOrder(&people_, &input_);
    input_.setFocus();
}

void RoomWindow::takeLines() {
    // A line acts in an event of its own: what it does may wait, and a callback of Qt's can't.
    input_.typing.onLine([this](std::string line) {
        view_.toEnd();
        loop_.post([window = QPointer(this), line = std::move(line), begun = halfTyped_.begun()] {
            if (window)
                window->take_(line, begun);
            if (window)
                window->input_.typing.goOn();
        });
    });
    input_.onPage([this](int pages) { view_.said().scrollPage(pages); });
    for (QSplitter* const splitter : {&sides_, &halves_})
        connect(splitter, &QSplitter::splitterMoved, this, [this] { placeChanged_(); });
    rooms_.onChosen([this](const std::string& place) { goTo(conversations_.find(place)); });
}

// In an event of its own, by which time the window may be gone.
void RoomWindow::post(Task task) {
    loop_.post([window = QPointer(this), task = std::move(task)] {
        if (window)
            task();
    });
}

// Whoever has gone somewhere types there next.
void RoomWindow::goTo(const Conversation* conversation) {
    if (!conversation)
        return;
    post([this, place = conversation->place()] { go_(place); });
    input_.setFocus();
}

void RoomWindow::onPeople(PeopleView::MenuOf menuOf,
                          std::function<void(const std::string& name)> talk) {
    people_.onMenu(std::move(menuOf), [this](const Task& action) { post(action); });
    people_.onActivated([this, talk = std::move(talk)](const std::string& name) {
        post([talk, name] { talk(name); });
        input_.setFocus();
    });
}

void RoomWindow::onLink(std::function<void(const std::string& address)> open) {
    openLink_ = std::move(open);
    view_.said().onLink(
        [this](const std::string& address) { post([this, address] { openLink_(address); }); });
}

// For whoever has no mouse.
void RoomWindow::showLinks() {
    popUp(*this, linksMenu(conversations_.front(), openLink_),
          view_.said().mapToGlobal(QPoint(gap, gap)), [this](const Task& action) { post(action); });
}

void RoomWindow::addAbove(QWidget& widget) {
    rows_.insertWidget(0, &widget);
}

void RoomWindow::addHint(QWidget& widget) {
    rows_.insertWidget(rows_.indexOf(&sides_) + 1, &widget);
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

// Where there is nothing to go by, the window manager has a place for it. On a small screen that
// place may leave no room beside it, nor below.
void RoomWindow::placeFirst() {
    const QScreen* const pointed = QGuiApplication::screenAt(QCursor::pos());
    const QRect area = (pointed ? pointed : screen())->availableGeometry();
    QRect window(QPoint(), size() + frameRoom);
    window.moveCenter(area.center()); // as most of them do
    if (area.right() - window.right() >= besideRoom)
        return;
    window.moveTopRight({area.right() - besideRoom, area.top()});
    move(cornerWithin(area, window));
}

// Qt draws in a later turn of the loop. The empty task makes sure that there is one.
void RoomWindow::showNew() {
    look();
    tellCalls();
    const auto shown = view_.showNew();
    isRoomShown_ = isRoomShown_ && !shown.hasNews && !shown.isOther;
    const bool isLineElsewhere = halfTyped_.follow();
    const bool areRoomsShown = !rooms_.refresh();
    const bool wasShown = isRoomShown_;
    if (!wasShown)
        showRoom();
    if (shown.isAny || isLineElsewhere || !areRoomsShown || !wasShown)
        loop_.post([] {});
}

// Where there is nothing to choose from, what is said has all the room.
void RoomWindow::showRoom() {
    isRoomShown_ = true;
    const Conversation& front = conversations_.front();
    setWindowTitle("larkspin - " + toQt(front.isAtHome() ? visibleName(room_.name())
                                                         : conversations_.fullName(front)));
    const int count = room_.people().count();
    count_.setText(toQt(counted(count, "person", "people")));
    rooms_.setVisible(conversations_.all().size() > 1);
    people_.parentWidget()->setVisible(front.kind() != Conversation::Kind::person);
    view_.showRoom();
    showOwnName();
    people_.refresh();
}

void RoomWindow::showOwnName() {
    std::string prompt = visibleName(prompt_.empty() ? room_.ownName() : prompt_);
    if (const Conversation* const elsewhere = halfTyped_.elsewhere())
        prompt += " in " + conversations_.fullName(*elsewhere);
    ownName_.setText(toQt(prompt) + ':');
}

void RoomWindow::askPassword(const std::string& prompt, std::function<void(std::string)> answered) {
    prompt_ = prompt;
    roomChanged();
    input_.typing.takeSecret([this, answered = std::move(answered)](std::string line) {
        prompt_.clear();
        roomChanged();
        post([answered, line = std::move(line)] { answered(line); });
    });
}

void RoomWindow::dismissPassword() {
    prompt_.clear();
    roomChanged();
    input_.typing.dropSecret();
}

void RoomWindow::offer(const std::string& line) {
    input_.typing.put({.text = asSeen(line), .cursor = Draft::atEnd});
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
    if (type == QEvent::WindowActivate || type == QEvent::WindowDeactivate)
        loop_.post([] {}); // which looks
    return done;
}

std::vector<QRect> RoomWindow::openParts() const {
    const auto seen = [](const QWidget& part) {
        return QRect(part.mapToGlobal(QPoint()), part.size());
    };
    QRect title = frameGeometry(); // by which the window is moved and closed
    title.setBottom(geometry().top() - 1);
    QRect foot = geometry(); // the line, and what is below it
    foot.setTop(seen(input_).top());
    return {foot, title, seen(view_.said())};
}

// What has come while he was looking elsewhere gets a line before it.
void RoomWindow::look() {
    const bool looks = isActiveWindow();
    if (looks == conversations_.looks())
        return;
    if (looks && conversations_.front().unread() > 0)
        view_.refill();
    look_(looks);
}

// Before they are counted as seen.
void RoomWindow::tellCalls() {
    if (auto call = calls_.take()) {
        askForAttention(*this);
        callTasks_.begin(*call);
        call_ = std::move(call);
    }
    if (call_ && calls_.isOver(*call_)) {
        call_.reset();
        callTasks_.end();
    }
}

void RoomWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        view_.redraw();
}

std::string RoomWindow::place() const {
    return saveGeometry().toBase64().toStdString() + '\n' +
           halves_.saveState().toBase64().toStdString() + '\n' +
           sides_.saveState().toBase64().toStdString() + '\n';
}

void RoomWindow::restorePlace(const std::string& place) {
    const QList<QByteArray> lines = QByteArray::fromStdString(place).split('\n');
    restoreGeometry(QByteArray::fromBase64(lines.value(0)));
    halves_.restoreState(QByteArray::fromBase64(lines.value(1)));
    sides_.restoreState(QByteArray::fromBase64(lines.value(2)));
    // A window that was minimized when the last run ended opens like any other.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    fitScreen();
    if (place.empty())
        placeFirst();
}

} // namespace larkspin
