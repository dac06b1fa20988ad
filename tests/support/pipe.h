// A pipe, whose ends are closed with it.
#pragma once

#include "support/patience.h"

#include <fcntl.h>
#include <poll.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace larkspin {

class Pipe {
public:
    Pipe() {
        if (::pipe2(ends_, O_CLOEXEC) != 0)
            ends_[0] = ends_[1] = -1;
    }
    ~Pipe() {
        closeOut();
        closeIn();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int out() const { return ends_[0]; }                  // to read from
    int in() const { return ends_[1]; }                   // to write to
    int takeOut() { return std::exchange(ends_[0], -1); } // the caller closes it
    int takeIn() { return std::exchange(ends_[1], -1); }
    void closeOut() { ::close(takeOut()); }
    void closeIn() { ::close(takeIn()); }

    // Whether it had room for all of it.
    bool write(std::string_view text) {
        return ::write(ends_[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
    }
    // What stands in it, once something does.
    std::string readSoon() {
        pollfd readable{ends_[0], POLLIN, 0};
        ::poll(&readable, 1, patienceInMilliseconds);
        return readNow();
    }
    // All that stands in it.
    std::string readNow() {
        std::string text;
        char bytes[65536];
        for (pollfd readable{ends_[0], POLLIN, 0}; ::poll(&readable, 1, 0) > 0;) {
            const ssize_t count = ::read(ends_[0], bytes, sizeof bytes);
            if (count <= 0)
                break;
            text.append(bytes, static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int ends_[2];
};

} // namespace larkspin
