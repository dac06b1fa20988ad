// What fuzz targets are made of. A demand that doesn't hold ends the run, and its input is kept.
#pragma once

#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

inline void demand(bool holds) {
    if (!holds)
        std::abort();
}
