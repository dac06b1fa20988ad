// A hint to the processor that some memory is read soon. Without such a hint nothing but time is
// lost.
#pragma once

namespace larkspin {

#if defined(__GNUC__)
inline void prefetch(const void* address) {
    __builtin_prefetch(address);
}
#else
inline void prefetch(const void*) {}
#endif

} // namespace larkspin
