#include "irc/protocol/sha256.h"

#include <algorithm>
#include <bit>

namespace larkspin {

namespace {

constexpr std::uint32_t roundConstants[] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

std::uint32_t turned(std::uint32_t word, int a, int b, int c) {
    return std::rotr(word, a) ^ std::rotr(word, b) ^ std::rotr(word, c);
}

std::uint32_t mixed(std::uint32_t word, int a, int b, int shift) {
    return std::rotr(word, a) ^ std::rotr(word, b) ^ word >> shift;
}

// The highest byte first.
void append(std::string& bytes, std::uint32_t word) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(word >> shift & 0xFF);
}

} // namespace

void Sha256::take(const unsigned char* block) {
    std::array<std::uint32_t, 64> words;
    for (std::size_t at = 0; at < 16; ++at)
        words[at] = std::uint32_t(block[4 * at]) << 24 | std::uint32_t(block[4 * at + 1]) << 16 |
                    std::uint32_t(block[4 * at + 2]) << 8 | block[4 * at + 3];
    for (std::size_t at = 16; at < 64; ++at)
        words[at] = words[at - 16] + mixed(words[at - 15], 7, 18, 3) + words[at - 7] +
                    mixed(words[at - 2], 17, 19, 10);
    auto [a, b, c, d, e, f, g, h] = state_;
    for (std::size_t round = 0; round < 64; ++round) {
        const std::uint32_t first =
            h + turned(e, 6, 11, 25) + ((e & f) ^ (~e & g)) + roundConstants[round] + words[round];
        const std::uint32_t second = turned(a, 2, 13, 22) + ((a & b) ^ (a & c) ^ (b & c));
        h = g, g = f, f = e, e = d + first;
        d = c, c = b, b = a, a = first + second;
    }
    const std::uint32_t mix[] = {a, b, c, d, e, f, g, h};
    for (std::size_t at = 0; at < state_.size(); ++at)
        state_[at] += mix[at];
}

void Sha256::add(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t begun = size_ % blockSize;
        const std::size_t count = std::min(bytes.size(), blockSize - begun);
        std::copy_n(bytes.begin(), count, block_.begin() + static_cast<std::ptrdiff_t>(begun));
        size_ += count;
        bytes.remove_prefix(count);
        if (size_ % blockSize == 0)
            take(block_.data());
    }
}

std::string Sha256::finish() {
    const std::uint64_t bits = size_ * 8;
    std::string end(1, '\x80');
    end.resize(1 + (2 * blockSize - 9 - size_ % blockSize) % blockSize, '\0');
    append(end, static_cast<std::uint32_t>(bits >> 32));
    append(end, static_cast<std::uint32_t>(bits));
    add(end);
    std::string digest;
    for (const std::uint32_t word : state_)
        append(digest, word);
    return digest;
}

std::string sha256(std::string_view bytes) {
    Sha256 sum;
    sum.add(bytes);
    return sum.finish();
}

HmacSha256::HmacSha256(std::string_view key) {
    std::string padded = key.size() > Sha256::blockSize ? sha256(key) : std::string(key);
    padded.resize(Sha256::blockSize, '\0');
    const auto with = [&padded](int pattern) {
        std::string pad = padded;
        for (char& byte : pad)
            byte = static_cast<char>(byte ^ pattern);
        return pad;
    };
    inner_.add(with(0x36));
    outer_.add(with(0x5C));
}

std::string HmacSha256::of(std::string_view bytes) const {
    Sha256 inner = inner_, outer = outer_;
    inner.add(bytes);
    outer.add(inner.finish());
    return outer.finish();
}

std::string pbkdf2Sha256(std::string_view password, std::string_view salt, int rounds) {
    const HmacSha256 hmac(password);
    std::string last = hmac.of(std::string(salt) + std::string("\0\0\0\1", 4)), all = last;
    for (int round = 1; round < rounds; ++round) {
        last = hmac.of(last);
        for (std::size_t at = 0; at < all.size(); ++at)
            all[at] = static_cast<char>(all[at] ^ last[at]);
    }
    return all;
}

} // namespace larkspin
