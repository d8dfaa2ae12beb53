#include "fuzz/Feed.h"

#include <cstddef>

// What the fuzzer of the compiler calls with each of its inputs.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    feed(QByteArrayView(data, static_cast<qsizetype>(size)));
    return 0;
}
