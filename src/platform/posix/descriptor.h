// A file descriptor that is closed when it goes.
#pragma once

#include <unistd.h>
#include <utility>

namespace larkspin {

class Descriptor {
public:
    Descriptor() = default; // none
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (isOpen())
            ::close(number_);
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }

private:
    int number_ = -1;
};

} // namespace larkspin
