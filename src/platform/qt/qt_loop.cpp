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

// A long job serves a turn at each of its steps. It must not spend its time on looking for input
// nor on drawing, but be seen to go on.
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

void QtLoop::watch(int descriptor, Task readable) {
    unwatch(descriptor);
    auto* const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
    notifier->setEnabled(hearing_);
    QObject::connect(notifier, &QSocketNotifier::activated,
                     [this, task = std::make_shared<const Task>(std::move(readable))] {
                         const auto kept = task; // the task may unwatch its own descriptor
                         queue_.runNested(*kept);
                         hearDescriptors();
                         arm();
                     });
    watched_[descriptor] = notifier;
}

void QtLoop::watchWritable(int descriptor, Task writable) {
    unwatchWritable(descriptor);
    auto* const notifier = new QSocketNotifier(descriptor, QSocketNotifier::Write);
    QObject::connect(notifier, &QSocketNotifier::activated,
                     [task = std::make_shared<const Task>(std::move(writable))] {
                         const auto kept = task;
                         (*kept)();
                     });
    watchedWritable_[descriptor] = notifier;
}

// Not deleted at once: its task may be running.
void QtLoop::forget(Watches& watches, int descriptor) {
    const auto found = watches.find(descriptor);
    if (found == watches.end())
        return;
    found->second->setEnabled(false);
    found->second->deleteLater();
    watches.erase(found);
}

// Served however deep handlers are nested, since they end the process as a rule.
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

// The windows are shown by what comes before a sleep, which a long job doesn't come to.
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

// One of Qt's dispatchers says that it is about to sleep also when something is due.
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

// Only the innermost wait can end. What has passed counts no more: a loop of Qt's own may keep
// that wait from noticing it, and must not be kept awake. The timer is always started anew, since
// one whose handler is still running doesn't fire again.
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

// Nested too deep, what can be read waits like all events. One of Qt's dispatchers heeds no other
// way of saying so.
void QtLoop::hearDescriptors() {
    if (hearing_ == queue_.canNest())
        return;
    hearing_ = !hearing_;
    for (const auto& entry : watched_)
        entry.second->setEnabled(hearing_);
}

} // namespace larkspin
