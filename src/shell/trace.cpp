#include "shell/trace.h"

#include "text/characters.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>
#include <optional>

namespace larkspin {

namespace {

std::int64_t millisecondsNow() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

// How far the owner's clock is ahead of the world's.
std::int64_t zoneNow() {
    const std::time_t now = std::time(nullptr);
    const int isSummer = std::localtime(&now)->tm_isdst;
    std::tm world = *std::gmtime(&now);
    world.tm_isdst = isSummer;
    return std::int64_t{1000} * (now - std::mktime(&world));
}

// Writes into a buffer, and leaves out what it has no room for.
class Writer {
public:
    explicit Writer(Trace::Buffer& buffer) : buffer_(buffer) {}

    Writer& operator<<(std::string_view text) {
        const std::size_t length = std::min(text.size(), buffer_.size() - length_);
        std::copy_n(text.begin(), length, buffer_.begin() + length_);
        length_ += length;
        return *this;
    }
    void number(std::int64_t value, std::int64_t digits = 1) {
        std::array<char, 20> text{};
        const auto end = std::to_chars(text.begin(), text.end(), value).ptr;
        for (auto missing = digits - (end - text.begin()); missing > 0; --missing)
            *this << "0";
        *this << std::string_view(text.begin(), end);
    }
    std::string_view text() const { return {buffer_.data(), length_}; }

private:
    Trace::Buffer& buffer_;
    std::size_t length_ = 0;
};

// The stand-in whose three bytes begin there; nothing for other bytes.
std::optional<char> standInAt(std::string_view text, std::size_t at) {
    if (text[at] != '\xEF' || at + 2 >= text.size())
        return std::nullopt;
    const auto bits = [&](std::size_t place) {
        return static_cast<char32_t>(static_cast<unsigned char>(text[place]) & 0x3Fu);
    };
    return standsFor(0xF000u | bits(at + 1) << 6u | bits(at + 2));
}

// Of UTF-8: the second range of control characters begins with a byte of its own. Names are told as
// they stand on the disk. Returns the new length, which isn't larger.
std::size_t makeHarmless(std::string_view text, Trace::Buffer& buffer) {
    std::size_t length = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto meant = standInAt(text, at);
        const char byte = meant.value_or(text[at]);
        const char32_t code = static_cast<unsigned char>(byte);
        const bool isAlone = code < 0x80 || (at > 0 && text[at - 1] == '\xC2');
        buffer[length++] = isAlone && isControl(code) ? '?' : byte;
        at += meant ? 2 : 0;
    }
    return length;
}

} // namespace

Trace::Trace() : zone_(zoneNow()) {}

Trace::Fact& Trace::next(const char* kind) {
    Fact& fact = facts_[noted_++ % most];
    fact.at = millisecondsNow();
    fact.kind = kind;
    fact.times = 1;
    fact.length = 0;
    return fact;
}

void Trace::note(const char* kind, std::string_view detail, std::string_view more) {
    Fact& fact = next(kind);
    for (const std::string_view text : {detail, more}) {
        if (fact.length > 0 && fact.length < fact.text.size() && !text.empty())
            fact.text[fact.length++] = ' ';
        const std::size_t length = std::min(text.size(), fact.text.size() - fact.length);
        std::copy_n(text.begin(), length, fact.text.begin() + fact.length);
        fact.length = static_cast<std::uint8_t>(fact.length + length);
    }
}

void Trace::count(const char* kind) {
    Fact* const last = noted_ > 0 ? &facts_[(noted_ - 1) % most] : nullptr;
    if (last && last->kind == kind && last->length == 0)
        ++last->times;
    else
        next(kind);
}

std::string_view Trace::line(std::size_t number, Buffer& buffer) const {
    const Fact& fact = facts_[(noted_ - size() + number) % most];
    constexpr std::int64_t day = 86'400'000;
    const std::int64_t time = ((fact.at + zone_) % day + day) % day;
    Writer line(buffer);
    line.number(time / 3'600'000, 2);
    line << ":";
    line.number(time / 60'000 % 60, 2);
    line << ":";
    line.number(time / 1000 % 60, 2);
    line << ".";
    line.number(time % 1000, 3);
    line << " " << fact.kind;
    if (fact.length > 0)
        line << " " << std::string_view(fact.text.data(), fact.length);
    if (fact.times > 1) {
        line << ", ";
        line.number(static_cast<std::int64_t>(fact.times));
        line << " times";
    }
    return {buffer.data(), makeHarmless(line.text(), buffer)};
}

} // namespace larkspin
