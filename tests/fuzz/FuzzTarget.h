#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What a fuzz target defines: takes any bytes and returns 0, or ends the program where a promise is broken.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace brindle::fuzz {

/// Ends the program unless what was promised holds.
inline void require(bool holds, const char *promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}

} // namespace brindle::fuzz
