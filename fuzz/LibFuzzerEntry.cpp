// The entry point of libFuzzer, compiled once for each fuzzer: KALMO_FUZZ_TARGET is its function.

#include "fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const quint8* data, size_t size)
{
    kalmo::fuzz::KALMO_FUZZ_TARGET(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}
