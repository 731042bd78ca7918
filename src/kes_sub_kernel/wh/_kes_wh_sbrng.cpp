// __kessBRngWH: floats, each rounded once; b - a is rounded to double once a call.
#include <kes_sub_kernel/wh/wh.hpp>

using namespace qorkes;

int __kessBRngWH(StreamState* stream, int n, float* r, float a, float b) {
    return drawWh(stream, n, r, a, b);
}
