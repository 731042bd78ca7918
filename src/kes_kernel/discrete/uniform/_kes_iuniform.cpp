// _kesiRngUniform: integers from a to b - 1, the floors of doubles from [a, b). The
// first half of a long call's doubles stands in the array of results, which has the
// place for it; the rest goes through a block on the stack.
#include <kes_kernel/discrete/truncate.hpp>
#include <kes_kernel/frame.hpp>

namespace qorkes {
namespace {

constexpr int blockSize = 1024;

int drawFloors(StreamState* stream, int n, DoubleInPlace* x, int32_t* r, int32_t a,
               int32_t b) {
    const int status = uniforms(stream, n, x, a, b);
    if (!failed(status)) toIntegers<Rounding::down>(n, x, r);
    return status;
}

} // namespace
} // namespace qorkes

int _kesiRngUniform(int, StreamState* stream, int n, int32_t* r, int32_t a, int32_t b) {
    using namespace qorkes;
    int status = KesStatusOk;
    if (const int half = n >> 1; half > blockSize) {
        status = drawFloors(stream, half, reinterpret_cast<DoubleInPlace*>(r), r, a, b);
        r += half;
        n -= half;
    }
    while (n > 0 && !failed(status)) {
        double block[blockSize];
        const int count = std::min(n, blockSize);
        status = drawFloors(stream, count, block, r, a, b);
        r += count;
        n -= count;
    }
    return status;
}
