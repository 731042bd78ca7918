// __kesiBRngNiederr: the words themselves, as fractions of 32 bits.
#include <kes_sub_kernel/niederr/niederr.hpp>

using namespace qorkes;

int __kesiBRngNiederr(StreamState* stream, int n, uint32_t* r) {
    return deliverQuasi<NiederrState>(stream, n, r);
}
