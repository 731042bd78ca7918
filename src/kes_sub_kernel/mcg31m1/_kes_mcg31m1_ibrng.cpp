// __kesiBRngMCG31M1: the numbers themselves, one word each.
#include <kes_sub_kernel/mcg31m1/mcg31m1.hpp>

using namespace qorkes;

namespace {

/// The first element is stored before n is looked at, and the second unless n is 0
/// or 1.
constexpr int countOf(int n) { return n < 0 ? 2 : n == 0 ? 1 : n; }

} // namespace

int __kesiBRngMCG31M1(StreamState* stream, int n, uint32_t* r) {
    auto& state = stateOf<Mcg31m1State>(stream);
    state.Value = runTwoChains(state, countOf(n), [=](int i, uint32_t x) { r[i] = x; });
    return KesStatusOk;
}
