#include "fuzz/Feed.h"

#include <QCoreApplication>

#include <cstddef>

// What the fuzzer of the compiler calls, once and then with each of its inputs.
extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    feed(QByteArrayView(data, static_cast<qsizetype>(size)));
    return 0;
}
