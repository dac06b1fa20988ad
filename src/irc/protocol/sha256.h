// SHA-256, and what is built on it to prove that one knows a password: HMAC and PBKDF2.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace larkspin {

class Sha256 {
public:
    void add(std::string_view bytes);

    // The 32 bytes for all that was added. Nothing can be added after it.
    std::string finish();

    static constexpr std::size_t blockSize = 64;

private:
    void take(const unsigned char* block);

    std::array<std::uint32_t, 8> state_{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                        0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    std::array<unsigned char, blockSize> block_{}; // begun
    std::uint64_t size_ = 0;                       // in bytes
};

std::string sha256(std::string_view bytes);

// The key's part of the work is done once, for all texts.
class HmacSha256 {
public:
    explicit HmacSha256(std::string_view key);
    std::string of(std::string_view bytes) const;

private:
    Sha256 inner_, outer_;
};

// The first block of it, which is as long as a key here.
std::string pbkdf2Sha256(std::string_view password, std::string_view salt, int rounds);

} // namespace larkspin
