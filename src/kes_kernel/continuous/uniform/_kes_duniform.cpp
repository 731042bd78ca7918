// _kesdRngUniform: doubles from [a, b), as the stream's generator delivers them.
#include <kes_sub_kernel/stream_record.hpp>

int _kesdRngUniform(int, StreamState* stream, int n, double* r, double a, double b) {
    return qorkes::rowOf(stream).dBRng(stream, n, r, a, b);
}
