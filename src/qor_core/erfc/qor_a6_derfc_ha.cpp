// _qordErfc_HA: y = 1 - erf(a) in double precision, largest error 0.501 ulp.
//
// With v = |a|: a polynomial of degree 11 about the middle of one of 160 intervals, its
// leading terms exact at 53 bits. Up to 1.8284 it is erfc(v); beyond it is erfc(v)
// exp(v^2), and is multiplied, by parts, with exp(-v^2) = 2^(m + j/64) (1 + E). One
// rounding joins the parts. If a is negative the result is 2 - erfc(v).
//
//   magnitudes below 2^-70          1 + a
//   -5.8635847487551676 and below   2, inexact
//   26.543258454250982 and up       denormal, rounded once
//   27.226017111108366 and up       +0, status 4
//   +infinity, -infinity            0, 2
//   NaN                             the same NaN, quiet
#include <qor_core/_heap/erfc_rows.hpp>
#include <qor_core/_heap/powers_of_two.hpp>

using namespace qorkes;

namespace {

constexpr char _QOR_THISFUNC_NAME[] = "_qordErfc_HA";
constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;

#include "qor_a6_derfc_tables.inc"

struct Tables {
    SplitRow<11> rows[20 * erfcParts];
    Row exp2[64]; // 2^(j/64), the first part in 26 bits

    constexpr Tables() : rows{}, exp2{} {
        for (int i = 0; i < 20 * erfcParts; ++i) {
            Wide c[16];
            moveRow(_qordErfcHATab.rows[i / erfcParts], erfcCentre(i), c);
            rows[i].set(erfcCentre(i), c);
        }
        for (int j = 0; j < 64; ++j)
            exp2[j] = {_qordErfcHATab.exp2[j][0], _qordErfcHATab.exp2[j][1]};
    }
};
constexpr Tables erfcTables;

/// A number without its factor 2^exponent.
struct Scaled {
    Parts parts;
    int32_t exponent;
};

/// g exp(-v^2), for g of erfc(v) exp(v^2).
QORKES_INLINE Scaled timesGauss(const Parts& g, ext v, const Row (&exp2)[64]) {
    constexpr float toMultiplesOf2ToMinus17 = 0x1.8p+35f;
    constexpr float toMultiplesOf2ToMinus18 = 0x1.8p+34f;

    // -v^2 = r - ln(2) count/64, r in a part of 11 bits and a rest.
    const ext vHigh = round32(v);
    const ext square = vHigh * vHigh; // exact
    double shifted = round64(square * erfcExpScale + erfcExpShifter);
    asm("" : "+m"(shifted)); // stored once, and read there
    const auto steps = -static_cast<int32_t>(lowWord(shifted));
    const ext count = lowWordAsInteger(shifted);
    const ext lead = count * erfcLn2Hi - square; // exact
    const ext rHigh = lead + toMultiplesOf2ToMinus18 - toMultiplesOf2ToMinus18;
    const ext rLow = lead - rHigh + (count * erfcLn2Lo - (v - vHigh) * (v + vHigh));
    const ext r = rHigh + rLow;
    const ext series =
        (((erfcExpC6 * r + erfcExpC5) * r + erfcExpC4) * r + erfcExpC3) * r + erfcExpC2;
    const ext e = series * (r * r) + rLow; // exp(r) - 1 - rHigh

    // g in a part of 16 bits and a rest: its products with 26 and 11 bits are exact.
    const ext gHigh = g.high + toMultiplesOf2ToMinus17 - toMultiplesOf2ToMinus17;
    const ext gLow = g.high - gHigh + g.low;
    const Row& power = exp2[steps & 63];
    const ext first = gHigh * power.high;
    const ext second = first * rHigh;
    const ext high = first + second;
    const ext lost = second - (high - first);
    const ext rest = gLow * (ext{power.high} + power.low) + gHigh * power.low;
    return {{high, lost + (rest + (rest * (e + rHigh) + first * e))}, steps >> 6};
}

QORKES_INLINE Scaled erfcOf(ext v, const Tables& tables) {
    const uint32_t row = erfcRowOf(fourthPower(1.0L + v));
    const Parts sum = sumAt(v, tables.rows[row]);
    if (row < firstScaledRow) return {sum, 0};
    return timesGauss(sum, v, tables.exp2);
}

/// 2 - x, for x of at least 2^-60.
QORKES_INLINE ext twoMinus(const Scaled& x) {
    float power;
    setBits(power, static_cast<uint32_t>(x.exponent + 127) << 23);
    const ext high = x.parts.high * power;
    const ext difference = 2.0L - high;
    const ext lost = 2.0L - difference - high;
    return difference + (lost - x.parts.low * power);
}

constexpr uint64_t saturationAt = 0x4017744F8F74E94A; // 5.8635847487551676
constexpr uint64_t denormalFrom = 0x403A8B12FC6E4892; // 26.543258454250982
constexpr uint64_t underflowAt = 0x403B39DC41E48BFD;  // 27.226017111108366

/// The product of tiny numbers, stored for a moment, raises underflow.
QORKES_COLD void storeDenormalErfc(double& y, double x) {
    const Scaled erfc = erfcOf(x, erfcTables);
    y = round64(inRegister(ext{erfcTiny}) * erfcTiny);
    asm volatile("" : : "m"(y));
    y = round64(roundedToDenormal({scaleByPowerOfTwo(erfc.parts.high, erfc.exponent),
                                   scaleByPowerOfTwo(erfc.parts.low, erfc.exponent)}));
}

QORKES_COLD void withoutRows(int i, const double* a, double* y) {
    if (bitsOf(a[i]) - denormalFrom < underflowAt - denormalFrom)
        storeDenormalErfc(y[i], a[i]);
    else
        specialErfc<double, _ErrorGate>(i, a, y);
}

QORKES_NOINLINE void complements(int n, const double* a, double* y) {
    const Tables* tables = inRegister(&erfcTables);
    for (int i = 0; i < n; ++i) {
        const uint32_t high = highWord(a[i]);
        const bool isNegative = high & signBit;
        const uint64_t magnitude = uint64_t{high & magnitudeBits} << 32 | lowWord(a[i]);
        constexpr uint64_t first = uint64_t{erfcRowsFrom} << 32;
        const uint64_t end = isNegative ? saturationAt : denormalFrom;
        if (magnitude - first >= end - first) [[unlikely]] {
            withoutRows(i, a, y);
            continue;
        }
        const Scaled erfc = erfcOf(__builtin_fabsl(a[i]), *tables);
        if (isNegative) {
            y[i] = round64(twoMinus(erfc));
        } else {
            y[i] = round64(erfc.parts.high + erfc.parts.low);
            addToHighWord(y[i], static_cast<uint32_t>(erfc.exponent) << 20);
        }
    }
}

} // namespace

void _qordErfc_HA(int n, const double* a, double* y) {
    inFrame<Precision::bits53, Mxcsr::callers, complements>(n, a, y);
}
