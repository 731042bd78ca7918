// __kesiBRngiAbstract: the caller's integers as they stand.
#include <kes_sub_kernel/iabstract/iabstract.hpp>

#include <cstring>

using namespace qorkes;

namespace {

/// In ascending order where r and the buffer overlap.
void copyWords(uint32_t* r, const uint32_t* from, int count) {
    if (r + count > from && from + count > r) {
        for (int i = 0; i < count; ++i) r[i] = from[i];
        return;
    }
    std::memcpy(r, from, static_cast<std::size_t>(count) * sizeof *r);
}

} // namespace

int __kesiBRngiAbstract(StreamState* stream, int n, uint32_t* r) {
    return drawAbstract<IntegerAbstractState>(stream, n, r, copyWords);
}
