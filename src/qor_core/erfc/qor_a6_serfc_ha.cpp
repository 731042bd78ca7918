// _qorsErfc_HA: y = 1 - erf(a) in single precision, largest error 0.5001 ulp.
//
// The steps of the double kernel at 53-bit precision without parts: with v = |a| a
// polynomial of degree 6 about the middle of one of 112 intervals, from 1.8284 on times
// exp(-v^2) = 2^(m + j/64) (1 + E), rounded once. If a is negative the result is 2 -
// erfc(v).
//
//   magnitudes below 2^-70           1 + a
//   -3.8325068569007108 and below    2, inexact
//   10.054194928818097 and up        +0, status 4
//   +infinity, -infinity             0, 2
//   NaN                              the same NaN, quiet
#include <qor_core/_heap/erfc_rows.hpp>
#include <qor_core/_heap/powers_of_two.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qorsErfc_HA";
constexpr auto _ErrorGate = errorGate<float, _QOR_THISFUNC_NAME>;

#include "qor_a6_serfc_tables.inc"

struct SingleRow {
    float centre;
    float exponent; // of the exponential by which the sum is multiplied, over v^2
    double c[7];
};
struct Tables {
    SingleRow rows[14 * erfcParts];
    double exp2[64];

    constexpr Tables() : rows{}, exp2{} {
        for (int i = 0; i < 14 * erfcParts; ++i) {
            rows[i].centre = static_cast<float>(erfcCentre(i));
            rows[i].exponent = i < static_cast<int>(firstScaledRow) ? 0 : -1;
            Wide c[16];
            moveRow(_qorsErfcHATab.rows[i / erfcParts], rows[i].centre, c);
            for (int k = 0; k <= 6; ++k) rows[i].c[k] = static_cast<double>(c[k]);
        }
        for (int j = 0; j < 64; ++j)
            exp2[j] = static_cast<double>(Wide{_qorsErfcHATab.exp2[j][0]} +
                                          _qorsErfcHATab.exp2[j][1]);
    }
};
constexpr Tables erfcTables;

constexpr double ln2Of64th = static_cast<double>(ext{erfcLn2Hi} + erfcLn2Lo);

/// Between the passes over a block.
struct Steps {
    double fourth;   // (1 + v)^4
    double sum;      // of the row's polynomial
    double exponent; // -v^2, or 0
    double shifted;  // the same in units of ln(2)/64, as an integer in the low word
};

/// Without a branch for the rows that need no exponential: it would be hard to foresee.
QORKES_INLINE void sumRow(Steps& steps, ext v, const Tables& tables) {
    const SingleRow& row = tables.rows[erfcRowOf(steps.fourth)];
    const auto& c = row.c;
    const ext u = v * v * row.exponent;
    steps.exponent = round64(u);
    steps.shifted = round64(u * erfcExpScale + erfcExpShifter);
    const ext t = v - row.centre;
    steps.sum = round64(
        (((((c[6] * t + c[5]) * t + c[4]) * t + c[3]) * t + c[2]) * t + c[1]) * t +
        c[0]);
}

QORKES_INLINE ext timesExp(const Steps& steps, const Tables& tables) {
    const uint32_t w = lowWord(steps.shifted);
    const ext r = steps.exponent - lowWordAsInteger(steps.shifted) * ln2Of64th;
    const ext e = (((erfcExpC4 * r + erfcExpC3) * r + erfcExpC2) * r + 1.0L) * r + 1.0L;
    return e * steps.sum * tables.exp2[w & 63] * singlePowers.at(w >> 6);
}

/// What depends on the sign of the argument, negative last: the first magnitude without
/// a row, and erfc(a) = base + factor erfc(|a|).
constexpr uint32_t endOfRows[2] = {0x4120DDFC, 0x407547CB}; // 10.0541954, 3.8325069
constexpr float base[2] = {0, 2}, factor[2] = {1, -1};

constexpr uint32_t rowsFrom = 0x1C800000; // 2^-70

QORKES_INLINE bool hasRow(const float& x) {
    const uint32_t bits = bitsOf(x);
    return (bits & magnitudeBits) - rowsFrom < endOfRows[bits >> 31] - rowsFrom;
}

/// The elements before the first one without a row, up to a block of them, in passes
/// that keep the chains of dependent operations short; returns how many these are.
QORKES_NOINLINE int elementsWithRow(int n, const float* a, float* y) {
    Steps steps[blockSize];
    const int last = n < blockSize ? n : blockSize;
    int count = 0;
    for (; count < last && hasRow(a[count]); ++count)
        steps[count].fourth = fourthPower(1.0L + __builtin_fabsl(a[count]));
    const Tables* tables = inRegister(&erfcTables);
    for (int i = 0; i < count; ++i) sumRow(steps[i], __builtin_fabsl(a[i]), *tables);
    for (int i = 0; i < count; ++i) {
        const uint32_t sign = bitsOf(a[i]) >> 31;
        y[i] = round32(timesExp(steps[i], *tables) * factor[sign] + base[sign]);
    }
    return count;
}

QORKES_NOINLINE void complements(int n, const float* a, float* y) {
    inRuns(
        n, [=](int i) { return elementsWithRow(n - i, a + i, y + i); },
        [=](int i) { specialErfc<float, _ErrorGate>(i, a, y); });
}

} // namespace

void _qorsErfc_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, complements>(n, a, y);
}
