// __kesiBRngSobol: the words themselves, as fractions of 32 bits.
#include <kes_sub_kernel/sobol/sobol.hpp>

using namespace qorkes;

int __kesiBRngSobol(StreamState* stream, int n, uint32_t* r) {
    return deliverQuasi<SobolState>(stream, n, r);
}
