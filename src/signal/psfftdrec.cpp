// zubs_cRealRecombine_64f, zubs_cCcsRecombine_64f: between the spectrum of n complex
// numbers and the spectrum of the 2n real ones that they were taken from (Cooley, Lewis
// and Welch, 1970). Places 0 and n, which stand together, are the caller's.
//
// The mirrored forms belong to spectra with the positive exponent.
#include <signal/psfft.hpp>

using namespace qorkes;

namespace {

template <bool mirrored> void toReal(double* x, int n, const double* table) {
    for (int k = 1; 2 * k < n; ++k) {
        double *const p = x + 2 * k, *const q = x + 2 * (n - k);
        const ext t = table[2 * k];
        const ext u = mirrored ? ext{1} - table[2 * k + 1] : ext{table[2 * k + 1]};
        const ext dr = ext{p[0]} - q[0], si = ext{p[1]} + q[1];
        const ext P = u * dr + t * si, Q = u * si - t * dr;
        forgetLoads();
        const ext re = q[0] + P;
        q[0] = round64(p[0] - P);
        p[0] = round64(re);
        const ext im = Q - q[1];
        q[1] = round64(Q - p[1]);
        p[1] = round64(im);
    }
    if (n > 1 && !mirrored) x[n + 1] = round64(-ext{x[n + 1]});
}

template <bool mirrored>
void toComplex(const double* x, double* y, int n, const double* table) {
    for (int k = 1; 2 * k < n; ++k) {
        const double *const p = x + 2 * k, *const q = x + 2 * (n - k);
        const ext t = table[2 * k];
        const ext u = mirrored ? -ext{table[2 * k + 1]} : ext{table[2 * k + 1]};
        const ext dr = ext{p[0]} - q[0], si = ext{p[1]} + q[1];
        const ext P = u * dr - t * si, R = t * dr + u * si;
        forgetLoads();
        const ext sr = ext{p[0]} + q[0], di = ext{p[1]} - q[1];
        y[2 * k] = round64(sr + P);
        y[2 * (n - k)] = round64(sr - P);
        y[2 * k + 1] = round64(di + R);
        y[2 * (n - k) + 1] = round64(R - di);
    }
    if (n > 1) {
        y[n] = round64(2 * ext{x[n]});
        y[n + 1] = round64((mirrored ? 2 : -2) * ext{x[n + 1]});
    }
}

} // namespace

void zubs_cRealRecombine_64f(double* data, int n, int direction, const double* table) {
    if (direction > 0)
        toReal<false>(data, n, table);
    else
        toReal<true>(data, n, table);
}

void zubs_cCcsRecombine_64f(const double* src, double* dst, int n, int direction,
                            const double* table) {
    if (direction < 0)
        toComplex<false>(src, dst, n, table);
    else
        toComplex<true>(src, dst, n, table);
}
