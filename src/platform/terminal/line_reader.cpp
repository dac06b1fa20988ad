#include "platform/terminal/line_reader.h"

#include "platform/terminal/foreground.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

constexpr auto betweenLooks = std::chrono::seconds(1); // for the terminal, while it is another's

} // namespace

LineReader::LineReader(PollLoop& loop, TerminalInput& input, int descriptor)
    : loop_(loop), input_(input), descriptor_(descriptor) {
    input_.onEmpty([this] { watch(); });
    watch();
}

// No signal tells a running job that its shell has brought it to the front; hence the looks at
// intervals.
void LineReader::watch() {
    loop_.cancel(std::exchange(look_, TimerId::none));
    if (hasEnded_)
        return;
    if (isInForeground(descriptor_))
        loop_.watch(descriptor_, [this] { readOn(); });
    else
        look_ = loop_.once(betweenLooks, [this] { watch(); });
}

void LineReader::readOn() {
    if (!isInForeground(descriptor_)) {
        loop_.unwatch(descriptor_);
        return watch();
    }
    char bytes[65536];
    const ssize_t count = ::read(descriptor_, bytes, sizeof bytes);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count > 0) {
        take(bytes, static_cast<std::size_t>(count));
    } else {
        hasEnded_ = true;
        if (!begun_.empty())
            endLine();
        input_.end();
    }
    // The input asks for more when the lines that it has are taken.
    if (hasEnded_ || !input_.empty())
        loop_.unwatch(descriptor_);
}

void LineReader::take(const char* bytes, std::size_t count) {
    const char* const end = bytes + count;
    while (bytes != end) {
        const char* const newline = std::find(bytes, end, '\n');
        // Bytes beyond the longest line are dropped, up to the line's end.
        const auto room = longestLine - begun_.size();
        begun_.append(bytes, std::min(static_cast<std::size_t>(newline - bytes), room));
        if (newline == end)
            return;
        endLine();
        bytes = newline + 1;
    }
}

void LineReader::endLine() {
    if (begun_.ends_with('\r'))
        begun_.pop_back();
    input_.bring(std::exchange(begun_, {}));
}

} // namespace larkspin
