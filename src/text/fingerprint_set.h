// A set of texts that keeps a fingerprint of 128 bits of each instead of the text, side by side in
// one table: a look-up reads one place in memory, however many there are. Two different texts pass
// for the same with a chance of 1 in 2^128, which is never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace larkspin {

class FingerprintSet {
public:
    void add(std::string_view text);
    bool contains(std::string_view text) const;

private:
    struct Fingerprint {
        std::uint64_t low = 0, high = 0; // both 0: a free place
        bool operator==(const Fingerprint&) const = default;
    };

    static Fingerprint fingerprintOf(std::string_view text);
    std::size_t placeOf(const Fingerprint& fingerprint) const;
    void grow();

    std::vector<Fingerprint> places_; // as many as a power of two, at most half of them taken
    std::size_t count_ = 0;
};

} // namespace larkspin
