#include "text/text_sum.h"

namespace larkspin {

// Fowler, Noll and Vo's (FNV-1a).
std::uint64_t textSum(std::string_view text) {
    std::uint64_t sum = 0xCBF29CE484222325;
    for (const char byte : text)
        sum = (sum ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    return sum;
}

} // namespace larkspin
