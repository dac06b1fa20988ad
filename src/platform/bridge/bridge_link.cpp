#include "platform/bridge/bridge_link.h"

#include "platform/posix/no_signals.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using bridge::Frame;
using bridge::Kind;

constexpr std::size_t readAtOnce = 65536;
constexpr std::size_t longestBody =
    bridge::mostFrame / 2; // with its frame's head it fits in any case

// An honest bridge never sees more often than that, and no other one keeps the program busy.
constexpr Nanoseconds seenInterval = std::chrono::milliseconds(bridge::lookMilliseconds) / 2;

constexpr const char* noAnswer = "the bridge doesn't answer";
constexpr const char* neverBegan = "wine couldn't run the bridge";
constexpr const char* otherVersion = "the bridge is another version than larkspin";
constexpr const char* hasEnded = "the bridge has ended";

// A reader that is gone is told by a signal, which ends programs that don't expect it.
ssize_t writeQuietly(int descriptor, std::string_view bytes) {
    const NoSignals quiet;
    const ssize_t put = ::write(descriptor, bytes.data(), bytes.size());
    if (put < 0 && errno == EPIPE) {
        sigset_t broken;
        sigemptyset(&broken);
        sigaddset(&broken, SIGPIPE);
        const timespec atOnce{};
        ::sigtimedwait(&broken, nullptr, &atOnce);
        errno = EPIPE;
    }
    return put;
}

bool mayComeLater(int error) {
    return error == EAGAIN || error == EINTR;
}

} // namespace

BridgeLink::BridgeLink(WatchingLoop& loop, Events events)
    : loop_(loop), events_(std::move(events)) {}

void BridgeLink::open(BridgePipes pipes, Patience patience) {
    close();
    pipes_ = std::move(pipes);
    patience_ = patience;
    greeting_ = loop_.once(patience_.greeting, [this] { giveUp(noAnswer); });
    loop_.watch(pipes_.answers.number(), [this] { hear(); });
}

void BridgeLink::close() {
    drop();
    loop_.cancel(std::exchange(ending_, TimerId::none));
}

void BridgeLink::drop() {
    for (TimerId* const timer : {&greeting_, &late_, &again_, &seeing_})
        loop_.cancel(std::exchange(*timer, TimerId::none));
    if (pipes_.answers.isOpen()) {
        loop_.unwatch(pipes_.answers.number());
        loop_.unwatchWritable(pipes_.questions.number());
    }
    pipes_ = {};
    reader_ = {};
    hasGreeted_ = isLate_ = false;
    asked_ = {};
    answer_.reset();
    seen_.reset();
    unwritten_.clear();
}

void BridgeLink::giveUp(const std::string& why) {
    if (!pipes_.answers.isOpen())
        return;
    drop();
    ending_ = loop_.once(0ns, [this, why] {
        ending_ = TimerId::none;
        events_.ended(why);
    });
}

std::optional<std::string> BridgeLink::ask(Kind kind, std::string body) {
    if (isHung())
        readOnce(); // the answer may have come in this very event
    if (!isUp() || isAsked() || body.size() > longestBody)
        return std::nullopt;
    lastNumber_ = std::max(lastNumber_ + 1, 1u);
    asked_ = {kind, lastNumber_};
    unwritten_ = bridge::encoded({kind, lastNumber_, std::move(body)});
    exchange(loop_.now() + std::chrono::milliseconds(bridge::waitMilliseconds));
    if (isUp() && isAsked()) {
        isLate_ = true;
        late_ = loop_.once(patience_.lateAnswer, [this] { giveUp(noAnswer); });
        finishWriting();
    }
    return std::exchange(answer_, std::nullopt);
}

void BridgeLink::exchange(Nanoseconds latest) {
    for (;;) {
        write();
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(latest - loop_.now());
        if (!isUp() || !isAsked() || left <= 0ms)
            return;
        waitFor(static_cast<int>(left.count()));
        readOnce();
    }
}

void BridgeLink::waitFor(int milliseconds) const {
    pollfd both[] = {{pipes_.answers.number(), POLLIN, 0},
                     {unwritten_.empty() ? -1 : pipes_.questions.number(), POLLOUT, 0}};
    ::poll(both, 2, milliseconds);
}

void BridgeLink::write() {
    while (!unwritten_.empty()) {
        const ssize_t put = writeQuietly(pipes_.questions.number(), unwritten_);
        if (put < 0 && mayComeLater(errno))
            return;
        if (put < 0)
            return giveUp(hasEnded);
        unwritten_.erase(0, static_cast<std::size_t>(put));
    }
}

// What the bridge hasn't taken in time it takes later, so that it understands what comes after it.
void BridgeLink::finishWriting() {
    if (unwritten_.empty())
        return;
    loop_.watchWritable(pipes_.questions.number(), [this] {
        write();
        if (pipes_.questions.isOpen() && unwritten_.empty())
            loop_.unwatchWritable(pipes_.questions.number());
    });
}

void BridgeLink::hear() {
    const bool wasUp = isUp();
    readOnce();
    if (isUp() && !wasUp)
        events_.up();
}

// Only a piece, however much there is, so that nobody who never stops talking keeps the program.
void BridgeLink::readOnce() {
    std::array<char, readAtOnce> bytes;
    const ssize_t got = ::read(pipes_.answers.number(), bytes.data(), bytes.size());
    if (got < 0 && mayComeLater(errno))
        return;
    if (got <= 0)
        return giveUp(hasGreeted_ ? hasEnded : neverBegan);
    reader_.add({bytes.data(), static_cast<std::size_t>(got)});
    while (pipes_.answers.isOpen()) {
        auto frame = reader_.next();
        if (reader_.isBroken())
            return giveUp(unreadable);
        if (!frame)
            return;
        take(std::move(*frame));
    }
}

void BridgeLink::take(Frame frame) {
    if (!hasGreeted_)
        takeGreeting(frame);
    else if (frame.kind == Kind::seen)
        takeSeen(std::move(frame));
    else
        takeAnswer(std::move(frame));
}

void BridgeLink::takeGreeting(const Frame& frame) {
    bridge::Reader reader(frame.body);
    const std::string text = reader.text();
    const std::uint32_t version = reader.number();
    if (frame.kind != Kind::greeting || text != bridge::greetingText)
        return giveUp(unreadable);
    if (version != bridge::version)
        return giveUp(otherVersion);
    const std::string fault = reader.text();
    if (!reader.isGood() || !fault.empty())
        return giveUp(reader.isGood() ? fault : unreadable);
    hasGreeted_ = true;
    loop_.cancel(std::exchange(greeting_, TimerId::none));
}

void BridgeLink::takeAnswer(Frame frame) {
    const bool isWritten = unwritten_.empty(); // else it answers what it hasn't read
    if (!isAsked() || !isWritten || frame.number != asked_.number || frame.kind != asked_.kind)
        return giveUp(unreadable);
    if (std::exchange(asked_, {}).kind == Kind::watch)
        seen_.reset(); // by a watch before this one
    loop_.cancel(std::exchange(late_, TimerId::none));
    if (!std::exchange(isLate_, false))
        answer_ = std::move(frame.body);
    else if (again_ == TimerId::none)
        again_ = loop_.once(0ns, [this] {
            again_ = TimerId::none;
            events_.answersAgain();
        });
}

void BridgeLink::takeSeen(Frame frame) {
    seen_ = std::move(frame.body);
    if (seeing_ == TimerId::none)
        seeing_ = loop_.once(std::max(toldSeen_ + seenInterval - loop_.now(), 0ns),
                             [this] { tellSeen(); });
}

void BridgeLink::tellSeen() {
    seeing_ = TimerId::none;
    toldSeen_ = loop_.now();
    if (const auto body = std::exchange(seen_, std::nullopt))
        events_.seen(*body);
}

} // namespace larkspin
