// The bridge among the client's windows: it answers what it is asked over its standard input, one
// question after the other, and tells what it sees of a text that it watches. It ends with its
// input, or when it is asked what it can't read.
#include "platform/bridge/windows/desktop.h"
#include "platform/bridge/windows/piped_input.h"
#include "platform/bridge/windows/questions.h"

namespace {

using namespace larkspin::bridge;

bool say(const Frame& frame) {
    const std::string bytes = encoded(frame);
    for (std::size_t at = 0; at < bytes.size();) {
        DWORD written = 0;
        if (WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data() + at,
                      static_cast<DWORD>(bytes.size() - at), &written, nullptr) == 0)
            return false;
        at += written;
    }
    return true;
}

bool greet(const Desktop& desktop) {
    const std::string_view fault = desktop.isSeen() ? "" : "wine has no display";
    return say({Kind::greeting, 0, Writer().add(greetingText).add(version).add(fault).take()}) &&
           fault.empty();
}

bool answerAll(FrameReader& frames, Questions& questions) {
    while (const auto question = frames.next()) {
        auto body = questions.answer(*question);
        if (!body || !say({question->kind, question->number, std::move(*body)}))
            return false;
    }
    return !frames.isBroken();
}

bool tellChange(Questions& questions) {
    const auto* seen = questions.look();
    return seen == nullptr || say({Kind::seen, 0, Writer().add(*seen).take()});
}

// Between two looks there are so many milliseconds, however long one takes.
class LookTimes {
public:
    unsigned untilNext(bool isWatching) const {
        const ULONGLONG now = GetTickCount64();
        if (!isWatching)
            return INFINITE;
        return now < next_ ? static_cast<unsigned>(next_ - now) : 0;
    }
    void looked() { next_ = GetTickCount64() + lookMilliseconds; }

private:
    ULONGLONG next_ = 0;
};

void work() {
    static PipedInput input; // its thread ends with the program
    FrameReader frames;
    Questions questions;
    LookTimes times;
    const Desktop desktop;
    bool isGood = greet(desktop);
    while (isGood) {
        if (const auto bytes = input.wait(times.untilNext(questions.isWatching()))) {
            if (bytes->empty())
                return;
            frames.add(*bytes);
            isGood = answerAll(frames, questions);
        }
        if (isGood && questions.isWatching() && times.untilNext(true) == 0) {
            isGood = !desktop.isGone() && tellChange(questions);
            times.looked();
        }
    }
}

} // namespace

int main() {
    work();
    ExitProcess(0);
}
