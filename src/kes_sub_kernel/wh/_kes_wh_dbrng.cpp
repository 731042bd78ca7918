// __kesdBRngWH: doubles, each rounded once; b - a is rounded to double once a call.
#include <kes_sub_kernel/wh/wh.hpp>

using namespace qorkes;

int __kesdBRngWH(StreamState* stream, int n, double* r, double a, double b) {
    return drawWh(stream, n, r, a, b);
}
