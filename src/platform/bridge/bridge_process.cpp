#include "platform/bridge/bridge_process.h"

#include "platform/posix/spawn.h"

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds lookInterval = 50ms;
constexpr Nanoseconds timeToEnd = 3s;

struct BothEnds {
    Descriptor out, in;
};

BothEnds openPipe() {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return {};
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

// The other side's end may wait, since it is another open file.
void letNotWait(const Descriptor& end) {
    ::fcntl(end.number(), F_SETFL, ::fcntl(end.number(), F_GETFL) | O_NONBLOCK);
}

} // namespace

std::unique_ptr<BridgeProcess> BridgeProcess::start(const std::string& wine,
                                                    const std::string& bridge) {
    BothEnds questions = openPipe(), answers = openPipe();
    if (!questions.out.isOpen() || !answers.out.isOpen())
        return nullptr;
    letNotWait(questions.in);
    letNotWait(answers.out);
    const auto id = spawn({.program = wine,
                           .arguments = {bridge},
                           .environment = variables({"*"}),
                           .newSession = true,
                           .input = questions.out.number(),
                           .output = answers.in.number()});
    if (!id)
        return nullptr;
    return std::unique_ptr<BridgeProcess>(
        new BridgeProcess(*id, {std::move(questions.in), std::move(answers.out)}));
}

// It alone: what Wine has started beside it may serve the owner's other programs.
void BridgeProcess::kill() {
    if (!isGone()) // else it may be another's id by now
        ::kill(id_, SIGKILL);
    isGone();
}

bool BridgeProcess::isGone() {
    if (!gone_)
        gone_ = ::waitpid(id_, nullptr, WNOHANG) != 0;
    return gone_;
}

void EndingBridges::add(std::unique_ptr<BridgeProcess> process) {
    ending_.push_back({std::move(process), loop_.now()});
    if (look_ == TimerId::none)
        look_ = loop_.every(lookInterval, [this] { look(); });
}

void EndingBridges::look() {
    std::erase_if(ending_, [this](Ending& each) {
        if (loop_.now() - each.since > timeToEnd)
            each.process->kill();
        return each.process->isGone();
    });
    if (ending_.empty())
        loop_.cancel(std::exchange(look_, TimerId::none));
}

} // namespace larkspin
