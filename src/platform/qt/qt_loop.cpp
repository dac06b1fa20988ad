#include "platform/qt/qt_loop.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

// A long job serves a turn at each of its steps. It must not spend its time on looking for input or
// on drawing, but its progress must show.
constexpr Nanoseconds pollInterval = 1ms;
constexpr Nanoseconds showInterval = 50ms;

} // namespace

QtLoop::QtLoop() : alarm_(std::make_unique<QTimer>()) {
    alarm_->setSingleShot(true);
    alarm_->setTimerType(Qt::PreciseTimer);
    QObject::connect(alarm_.get(), &QTimer::timeout, [this] { wakeUp(); });
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     alarm_.get(), [this] { comeToRest(); });
}

QtLoop::~QtLoop() {
    for (Watches* watches : {&watched_, &watchedWritable_, &signals_})
        for (const auto& entry : *watches)
            delete entry.second;
    for (const auto& entry : signals_)
        ::close(entry.first);
}

void QtLoop::post(Task task) {
    queue_.post(std::move(task));
    arm();
}

TimerId QtLoop::every(Nanoseconds interval, Task task) {
    const TimerId id = queue_.every(interval, now(), std::move(task));
    arm();
    return id;
}

TimerId QtLoop::once(Nanoseconds span, Task task) {
    const TimerId id = queue_.once(span, now(), std::move(task));
    arm();
    return id;
}

TimerId QtLoop::goOn(std::uint64_t event, Nanoseconds span, Task task) {
    const TimerId id = queue_.goOn(event, span, now(), std::move(task));
    arm();
    return id;
}

void QtLoop::watch(int descriptor, Task readable) {
    unwatch(descriptor);
    auto* const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
    notifier->setEnabled(hearing_);
    // The task may unwatch its own descriptor, and this be gone with it before it returns.
    QObject::connect(notifier, &QSocketNotifier::activated, [this, readable = std::move(readable)] {
        QtLoop& loop = *this;
        loop.queue_.runNested(Task{readable});
        loop.hearDescriptors();
        loop.arm();
    });
    watched_[descriptor] = notifier;
}

void QtLoop::watchWritable(int descriptor, Task writable) {
    unwatchWritable(descriptor);
    auto* const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Write);
    QObject::connect(notifier, &QSocketNotifier::activated,
                     [writable = std::move(writable)] { Task{writable}(); });
    watchedWritable_[descriptor] = notifier;
}

// The notifier isn't deleted at once, since its task may be running.
void QtLoop::forget(Watches& watches, int descriptor) {
    const auto found = watches.find(descriptor);
    if (found == watches.end())
        return;
    found->second->setEnabled(false);
    found->second->deleteLater();
    watches.erase(found);
}

// Signals are served however deep handlers are nested, since most of them end the process.
void QtLoop::onSignals(std::initializer_list<int> signals, Task task) {
    const int descriptor = openSignals(signals);
    if (descriptor < 0)
        return;
    auto* const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier, &QSocketNotifier::activated, [descriptor, task = std::move(task)] {
        if (takeSignal(descriptor))
            task();
    });
    signals_[descriptor] = notifier;
}

// Windows are brought up to date before the loop sleeps. A long job doesn't let it sleep, so this
// is done here from time to time.
void QtLoop::serveTurn() {
    if (now() - polledAt_ >= pollInterval) {
        if (now() - shownAt_ >= showInterval)
            show();
        processEvents(false);
    }
    queue_.runDue(now());
}

void QtLoop::waitUntil(Nanoseconds moment) {
    deadlines_.push_back({moment});
    do
        turn();
    while (now() < moment);
    deadlines_.pop_back();
}

void QtLoop::waitFor(const std::function<bool()>& condition, Nanoseconds latest) {
    deadlines_.push_back({latest});
    while (!condition() && now() < latest)
        turn();
    deadlines_.pop_back();
}

void QtLoop::turn() {
    processEvents(!queue_.runDue(now()));
}

void QtLoop::processEvents(bool mayWait) {
    hearDescriptors();
    arm();
    QCoreApplication::processEvents(mayWait ? QEventLoop::WaitForMoreEvents
                                            : QEventLoop::AllEvents);
    polledAt_ = now();
}

void QtLoop::wakeUp() {
    for (Deadline& deadline : deadlines_)
        deadline.passed = deadline.passed || deadline.moment <= now();
    queue_.runDue(now());
    hearDescriptors();
    arm();
}

// One of Qt's dispatchers announces a sleep even when something is due.
void QtLoop::comeToRest() {
    if (queue_.nextDue().value_or(Nanoseconds::max()) > now())
        show();
}

void QtLoop::show() {
    if (showing_)
        return;
    showing_ = true;
    queue_.runBeforeSleep();
    shownAt_ = now();
    showing_ = false;
    arm();
}

// Sets the timer for what is due first, a queued event or the end of the innermost wait (the others
// can't end before it). A deadline that has passed doesn't count any more: a loop of Qt's own may
// keep the wait from noticing it, and would be kept awake by it. A handler of the timer may still
// be running, so the timer is started anew each time.
void QtLoop::arm() {
    auto due = queue_.nextDue();
    if (!deadlines_.empty() && !deadlines_.back().passed)
        due = std::min(due.value_or(Nanoseconds::max()), deadlines_.back().moment);
    if (due.value_or(Nanoseconds::max()) == Nanoseconds::max()) {
        alarm_->stop();
        return;
    }
    if (alarm_->isActive() && alarmAt_ == *due)
        return;
    alarmAt_ = *due;
    const Nanoseconds moment = now();
    const auto span = std::chrono::ceil<std::chrono::milliseconds>(std::max(*due, moment) - moment);
    alarm_->start(std::min<std::chrono::milliseconds>(span, 24h));
}

// When handlers are nested too deep, descriptors wait like all events. One of Qt's dispatchers can
// be stopped from reading in no other way than this.
void QtLoop::hearDescriptors() {
    if (hearing_ == queue_.canNest())
        return;
    hearing_ = !hearing_;
    for (const auto& entry : watched_)
        entry.second->setEnabled(hearing_);
}

} // namespace larkspin
