#include "platform/terminal/screen/screen.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds betweenPictures = 20ms;
constexpr auto longestUnseen = 100ms;     // that something has changed
constexpr auto betweenLooks = 1s;         // for the terminal, while it is another's
constexpr std::size_t mostStrokes = 1000; // that wait; what comes after them stays where it is
constexpr std::string_view pastesAreTold = "\x1b[?2004h", pastesAreNotTold = "\x1b[?2004l";
// From what every terminal knows to what is best: presses, moves, and places without a bound.
constexpr std::string_view mouseTaken = "\x1b[?1000h\x1b[?1002h\x1b[?1003h\x1b[?1006h",
                           mouseLeft = "\x1b[?1006l\x1b[?1003l\x1b[?1002l\x1b[?1000l";

// The loop holds the signal back, to hear of it. The system lets nobody stop who has no shell that
// could wake him up.
void stopThisProcess() {
    sigset_t stop;
    sigemptyset(&stop);
    sigaddset(&stop, SIGTSTP);
    std::raise(SIGTSTP);
    ::pthread_sigmask(SIG_UNBLOCK, &stop, nullptr); // here it stops
    ::pthread_sigmask(SIG_BLOCK, &stop, nullptr);
}

} // namespace

std::unique_ptr<Screen> Screen::open(PollLoop& loop, QueuedOutput& output) {
    auto picture = CursesPicture::open();
    if (!picture)
        return nullptr;
    return std::unique_ptr<Screen>(new Screen(loop, output, std::move(picture)));
}

Screen::Screen(PollLoop& loop, QueuedOutput& output, std::unique_ptr<CursesPicture> picture)
    : loop_(loop), output_(output), picture_(std::move(picture)) {
    // With no more than a change by another task before the sleep, that task is followed by an
    // event, and that by this task once more. A flood that lets nobody sleep is seen as well.
    layers.whenChanged([this] {
        loop_.post([] {});
        if (latestDraw_ == TimerId::none)
            latestDraw_ = loop_.once(longestUnseen, [this] {
                latestDraw_ = TimerId::none;
                draw();
            });
    });
    loop_.beforeSleep([this] { draw(); });
    output_.whenTaken([this] { draw(); });
    loop_.onSignals({SIGWINCH}, [this] { drawAnew(); });
    loop_.onSignals({SIGCONT}, [this] { look(); });
    loop_.onSignals({SIGTSTP}, [this] { suspend(); });
    std::signal(SIGPIPE, SIG_IGN); // whoever has gone shows as an error of writing
    look();
}

// A job that uses the terminal while it is in the background is stopped by the system. No signal
// tells a running job that its shell has brought it to the front; hence the looks at intervals.
// After a stop the terminal may be in any mode and of any size.
void Screen::look() {
    if (!isOpen_)
        return;
    loop_.cancel(std::exchange(look_, TimerId::none));
    isOurs_ = terminal_.isOurs();
    if (isOurs_) {
        terminal_.take(std::string(mouseLeft) + std::string(pastesAreNotTold) +
                       picture_->abruptEnd());
        isShown_ = false;
        drawAnew();
    } else {
        look_ = loop_.every(betweenLooks, [this] {
            if (terminal_.isOurs())
                look();
        });
    }
    hear();
}

void Screen::hear() {
    if (isOpen_ && isOurs_ && strokes_.size() < mostStrokes)
        loop_.watch(STDIN_FILENO, [this] { bytesCame(); });
    else
        loop_.unwatch(STDIN_FILENO);
}

// A terminal whose other end has gone reads as ended or fails.
void Screen::bytesCame() {
    char bytes[16384];
    const ssize_t count = ::read(STDIN_FILENO, bytes, sizeof bytes);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count <= 0) {
        isOurs_ = false;
        hear();
        whenGone_();
        return;
    }
    bring(reader_.take({bytes, static_cast<std::size_t>(count)}, loop_.now()));
    awaitRest();
}

void Screen::awaitRest() {
    loop_.cancel(std::exchange(incomplete_, TimerId::none));
    if (const auto patience = reader_.patience())
        incomplete_ = loop_.once(*patience, [this] {
            incomplete_ = TimerId::none;
            bring(reader_.giveUp());
        });
}

void Screen::bring(std::vector<Stroke> strokes) {
    for (Stroke& stroke : strokes)
        strokes_.push_back(std::move(stroke));
    hear();
    deliverLater();
}

// Each in an event of its own. While one is taken, and that waits, the next ones come.
void Screen::deliverLater() {
    if (!isHeld_ && !strokes_.empty() && !std::exchange(isDelivering_, true))
        loop_.post([this] {
            isDelivering_ = false;
            deliver();
        });
}

void Screen::deliver() {
    if (!isOpen_ || isHeld_ || strokes_.empty())
        return;
    const Stroke stroke = std::move(strokes_.front());
    strokes_.pop_front();
    hear();
    deliverLater();
    if (!layers.take(stroke))
        takeUnclaimed(stroke);
}

void Screen::takeUnclaimed(const Stroke& stroke) {
    const auto* const key = std::get_if<KeyStroke>(&stroke);
    if (!key || key->kind != KeyStroke::Kind::character || !key->ctrl || key->alt)
        return;
    if (key->character == 'l')
        drawAnew();
    else if (key->character == 'z')
        suspend();
}

void Screen::goOn() {
    isHeld_ = false;
    deliverLater();
}

void Screen::setTitle(const std::string& title) {
    if (std::exchange(title_, title) != title)
        layers.changed();
}

void Screen::ring() {
    if (isShown_)
        output_.putPassing("\a");
}

void Screen::takeMouse(bool takes) {
    if (std::exchange(takesMouse_, takes) != takes)
        layers.changed();
}

void Screen::drawAnew() {
    drawsAnew_ = true;
    layers.changed();
}

void Screen::draw() {
    if (!isOpen_ || !isOurs_ || !layers.isChanged() || !output_.isTaken() ||
        nextDraw_ != TimerId::none)
        return;
    const Nanoseconds now = loop_.now();
    if (drawnAt_ != Nanoseconds::min() && now - drawnAt_ < betweenPictures) {
        nextDraw_ = loop_.once(drawnAt_ + betweenPictures - now, [this] {
            nextDraw_ = TimerId::none;
            draw();
        });
        return;
    }
    loop_.cancel(std::exchange(latestDraw_, TimerId::none));
    const auto [rows, columns] = terminal_.size();
    Cells cells(rows, columns);
    const auto cursor = layers.draw(cells);
    std::string bytes = picture_->draw(cells, cursor, std::exchange(drawsAnew_, false));
    if (!std::exchange(isShown_, true)) {
        bytes += pastesAreTold;
        mouseIsTaken_ = false;
        shownTitle_.clear();
    }
    if (takesMouse_ != mouseIsTaken_ && picture_->hasMouse())
        bytes += (mouseIsTaken_ = takesMouse_) ? mouseTaken : mouseLeft;
    if (std::exchange(shownTitle_, title_) != title_)
        bytes += picture_->title(title_);
    drawnAt_ = now;
    output_.putPassing(bytes);
}

// The terminal as it was found.
void Screen::leave() {
    if (isOurs_) {
        std::string bytes = picture_->end();
        if (std::exchange(isShown_, false))
            bytes =
                std::string(mouseIsTaken_ ? mouseLeft : "") + std::string(pastesAreNotTold) + bytes;
        output_.putPassing(bytes);
        output_.finish();
    }
    terminal_.giveBack();
}

void Screen::suspend() {
    if (!isOpen_)
        return stopThisProcess();
    leave();
    stopThisProcess();
    look();
}

void Screen::close() {
    if (!isOpen_)
        return;
    leave();
    isOpen_ = false;
    hear();
    for (TimerId* const timer : {&nextDraw_, &latestDraw_, &incomplete_, &look_})
        loop_.cancel(std::exchange(*timer, TimerId::none));
}

} // namespace larkspin
