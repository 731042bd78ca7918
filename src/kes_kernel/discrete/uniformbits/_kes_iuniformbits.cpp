// _kesiRngUniformBits: integers as the stream's generator delivers them.
#include <kes_sub_kernel/stream_record.hpp>

int _kesiRngUniformBits(int, StreamState* stream, int n, uint32_t* r) {
    return qorkes::rowOf(stream).iBRng(stream, n, r);
}
