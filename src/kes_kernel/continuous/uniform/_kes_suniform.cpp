// _kessRngUniform: floats from [a, b), as the stream's generator delivers them.
#include <kes_sub_kernel/stream_record.hpp>

int _kessRngUniform(int, StreamState* stream, int n, float* r, float a, float b) {
    return qorkes::rowOf(stream).sBRng(stream, n, r, a, b);
}
