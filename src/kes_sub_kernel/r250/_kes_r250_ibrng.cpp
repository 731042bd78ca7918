// __kesiBRngR250: the words themselves. Up to the end of the register neither index
// turns back, and what is written is read again 103 words later at the soonest: four
// words go at a time.
#include <kes_sub_kernel/lanes.hpp>
#include <kes_sub_kernel/r250/r250.hpp>

#include <algorithm>

using namespace qorkes;

namespace {

/// n words from stretches of the register that do not wrap.
QORKES_INLINE void combine(uint32_t* replaced, const uint32_t* other, int n,
                           uint32_t* r) {
    int i = 0;
    for (; i < n - 3; i += 4) {
        const __m128 four = _mm_xor_ps(loadFour(replaced + i), loadFour(other + i));
        storeFour(replaced + i, four);
        storeFour(r + i, four);
    }
    for (; i < n; ++i) r[i] = replaced[i] ^= other[i];
}

} // namespace

int __kesiBRngR250(StreamState* stream, int n, uint32_t* r) {
    auto& state = stateOf<R250State>(stream);
    int index1 = state.Index1, index2 = state.Index2;
    while (n > 0) {
        const int length = std::min(n, sizeOfR250 - std::max(index1, index2));
        combine(state.Table + index1, state.Table + index2, length, r);
        r += length;
        n -= length;
        index1 = (index1 + length) % sizeOfR250;
        index2 = (index2 + length) % sizeOfR250;
    }
    state.Index1 = index1;
    state.Index2 = index2;
    return KesStatusOk;
}
