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
    double centre, c[7];
};
struct Tables {
    SingleRow rows[14 * erfcParts];
    double exp2[64]; // 2^(j/64)

    constexpr Tables() : rows{}, exp2{} {
        for (int i = 0; i < 14 * erfcParts; ++i) {
            rows[i].centre = erfcCentre(i);
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

QORKES_INLINE ext magnitudeOf(const float& x) { return __builtin_fabsl(loaded(x)); }

QORKES_INLINE ext sumAt(ext v, const SingleRow& row) {
    const auto& c = row.c;
    const ext t = v - row.centre;
    return (((((c[6] * t + c[5]) * t + c[4]) * t + c[3]) * t + c[2]) * t + c[1]) * t +
           c[0];
}

/// -v^2 in units of ln(2)/64, an integer in the low word.
QORKES_INLINE double stepsOf(ext v) {
    return round64(erfcExpShifter - v * v * erfcExpScale);
}

/// exp(-v^2).
QORKES_INLINE ext gauss(ext v, const double& steps, const Tables& tables) {
    const uint32_t w = lowWord(steps);
    const ext r = lowWordAsInteger(steps) * -ln2Of64th - v * v;
    const ext e = (((erfcExpC4 * r + erfcExpC3) * r + erfcExpC2) * r + 1.0L) * r + 1.0L;
    return e * tables.exp2[w & 63] * singlePowers.at(w >> 6);
}

/// Rows serve magnitudes from 2^-70 to these, the second if the argument is negative.
constexpr uint32_t rowsFrom = 0x1C800000;
constexpr uint32_t reach[2] = {0x4120DDFC - rowsFrom,  // 10.0541954
                               0x407547CB - rowsFrom}; // 3.8325069

QORKES_INLINE bool hasRow(const float& x) {
    const uint32_t bits = bitsOf(x);
    return (bits & magnitudeBits) - rowsFrom < reach[bits >> 31];
}

/// The elements before the first one without a row, up to a block of them; returns how
/// many these are. Passes keep the chains of dependent operations short, and a list of
/// the elements that need an exponential saves a branch that would be hard to foresee.
QORKES_NOINLINE int elementsWithRow(int n, const float* a, float* y) {
    const Tables* tables = inRegister(&erfcTables);
    double fourth[blockSize], erfc[blockSize], steps[blockSize];
    int scaled[blockSize];
    const int count = takeOrdinary<1>(
        n, [=](int i) { return hasRow(a[i]); },
        [&](int i) { fourth[i] = fourthPower(1.0L + magnitudeOf(a[i])); });
    int scaledCount = 0;
    for (int i = 0; i < count; ++i) {
        const uint32_t row = erfcRowOf(fourth[i]);
        erfc[i] = round64(sumAt(magnitudeOf(a[i]), tables->rows[row]));
        scaled[scaledCount] = i;
        scaledCount += row >= firstScaledRow;
    }
    for (int k = 0; k < scaledCount; ++k) steps[k] = stepsOf(magnitudeOf(a[scaled[k]]));
    for (int k = 0; k < scaledCount; ++k) {
        const int i = scaled[k];
        erfc[i] = round64(gauss(magnitudeOf(a[i]), steps[k], *tables) * erfc[i]);
    }
    constexpr float base[2] = {0, 2}, factor[2] = {1, -1};
    for (int i = 0; i < count; ++i) {
        const uint32_t sign = bitsOf(a[i]) >> 31;
        y[i] = round32(loaded(erfc[i]) * factor[sign] + base[sign]);
    }
    return count;
}

QORKES_NOINLINE void complements(int n, const float* a, float* y) {
    inRuns<1>(
        n, [=](int i) { return elementsWithRow(n - i, a + i, y + i); },
        [=](int i) { specialErfc<float, _ErrorGate>(i, a, y); });
}

} // namespace

void _qorsErfc_HA(int n, const float* a, float* y) {
    inFrame<Precision::bits53, Mxcsr::callers, complements>(n, a, y);
}
