#include "text/fingerprint_set.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t fewestPlaces = 64;

// Odd numbers with their bits well spread, so that each bit of a word reaches the whole half.
constexpr std::uint64_t lowFactor = 0x9E3779B97F4A7C15, highFactor = 0xD6E8FEB86659FD93;

std::uint64_t mixed(std::uint64_t half, std::uint64_t factor) {
    half *= factor;
    return half ^ (half >> 32);
}

} // namespace

FingerprintSet::Fingerprint FingerprintSet::fingerprintOf(std::string_view text) {
    std::uint64_t low = text.size(), high = ~low;
    while (!text.empty()) {
        std::uint64_t word = 0;
        const std::size_t length = std::min(text.size(), sizeof word);
        std::memcpy(&word, text.data(), length);
        low = mixed(low ^ word, lowFactor);
        high = mixed(high + word, highFactor);
        text.remove_prefix(length);
    }
    return {mixed(low, highFactor), mixed(high, lowFactor) | 1};
}

void FingerprintSet::add(std::string_view text) {
    if (2 * (count_ + 1) > places_.size())
        grow();
    const Fingerprint added = fingerprintOf(text);
    Fingerprint& place = places_[placeOf(added)];
    if (place == added)
        return;
    place = added;
    ++count_;
}

bool FingerprintSet::contains(std::string_view text) const {
    if (places_.empty())
        return false;
    const Fingerprint wanted = fingerprintOf(text);
    return places_[placeOf(wanted)] == wanted;
}

// Where it stands, or the free place where it would.
std::size_t FingerprintSet::placeOf(const Fingerprint& fingerprint) const {
    const std::size_t mask = places_.size() - 1;
    std::size_t place = fingerprint.low & mask;
    while (places_[place] != Fingerprint() && places_[place] != fingerprint)
        place = (place + 1) & mask;
    return place;
}

void FingerprintSet::grow() {
    const std::size_t places = std::max(fewestPlaces, 2 * places_.size());
    const auto old = std::exchange(places_, std::vector<Fingerprint>(places));
    for (const Fingerprint& fingerprint : old)
        if (fingerprint != Fingerprint())
            places_[placeOf(fingerprint)] = fingerprint;
}

} // namespace larkspin
