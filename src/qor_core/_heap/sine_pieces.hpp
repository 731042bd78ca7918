// The kernels of double Sin and Cos: x less a multiple of pi (for the cosine an odd
// multiple of pi/2), in four parts at 64-bit precision; then, for r in [-pi/2, pi/2],
// the odd polynomial of the piece that |r| lies in.
#pragma once

#include <qor_core/_heap/trig_groups.hpp>
#include <qor_core/frame.hpp>

namespace qorkes {

#include "_qor_sin_piece_tables.inc"

enum class Wave { sine, cosine };

constexpr double halfPi = 0x1.921fb54442d18p+0;
constexpr double piecesPerRadian = 0x1.436720cee34f2p+5; // 127/pi
static_assert(piecesPerRadian == 40.42535554534142);
static_assert(hasPattern(halfPi, 0x3FF921FB54442D18));

/// The five tables by rows: the coefficients of sin(r) / r in powers of r^2, from the
/// first, which is 1.
struct SinePieces {
    double rows[65][6];

    constexpr SinePieces() : rows{} {
        for (int i = 0; i < 65; ++i) {
            rows[i][0] = 1.0;
            rows[i][1] = sinPieceT0[i];
            rows[i][2] = sinPieceT1[i];
            rows[i][3] = sinPieceT2[i];
            rows[i][4] = sinPieceT3[i];
            rows[i][5] = sinPieceT4[i];
        }
    }
};
constexpr SinePieces sinePieces;

/// An element on its way: x = r + a count of half turns.
struct WaveArgument {
    int32_t count; // for the cosine more by one half
    int32_t piece; // signed as r is
};

template <Wave wave>
QORKES_INLINE void countHalfTurns(WaveArgument& argument, const double& x) {
    ext count = loadedHere(halfTurn.inverse);
    count *= wave == Wave::sine ? ext{x} : ext{x} + halfPi;
    storeNearest(argument.count, count);
}

/// For the cosine half turns count from a quarter turn: the same products, of numbers
/// twice and half as large.
template <Wave wave>
QORKES_INLINE ext reducedByHalfTurns(const double& x, const int32_t& count) {
    if constexpr (wave == Wave::sine) return reduced(x, loadInteger(count), halfTurn);
    const int32_t quarters = 2 * count - 1;
    return reduced(x, loadInteger(quarters), quarterTurn);
}

template <Wave wave>
QORKES_INLINE ext reducedToPiece(WaveArgument& argument, const double& x) {
    const ext r = reducedByHalfTurns<wave>(x, argument.count);
    storeNearest(argument.piece, loadedHere(piecesPerRadian) * r);
    return r;
}

/// The sine of r, with the sign of its half turn. The last step is a product, which
/// keeps the sign of a zero, where a sum would lose it.
QORKES_INLINE void storeWave(double& y, ext r, const WaveArgument& argument,
                             const SinePieces& pieces) {
    const double* c = pieces.rows[__builtin_abs(argument.piece)];
    const ext r2 = r * r;
    ext p = loadedHere(c[5]);
    p = p * r2 + c[4];
    p = p * r2 + c[3];
    p = p * r2 + c[2];
    p = p * r2 + c[1];
    p = p * r2 + c[0];
    storeFlipped(y, p * r, static_cast<uint32_t>(argument.count) << 31);
}

using ScalarCode = void (*)(int i, const double* a, double* y, int* status);

/// Hands elements over to the scalar code. The x87 unit is reinitialised before: its
/// exception flags are lost, and the rest of the array is computed under the control
/// word of a fresh unit, of the same precision and rounding.
template <ScalarCode scalarCode>
QORKES_COLD void handOver(int i, int count, const double* a, double* y) {
    asm volatile("fninit");
    for (int k = 0; k < count; ++k) scalarCode(i + k, a, y, nullptr);
}

template <Wave wave, ScalarCode scalarCode>
QORKES_INLINE void waveOfFour(int i, const double* a, double* y,
                              const SinePieces& pieces) {
    if (!areFourBelowLimit(a + i)) [[unlikely]]
        return handOver<scalarCode>(i, 4, a, y);
    const double* x = a + i;
    WaveArgument argument[4];
    countHalfTurns<wave>(argument[0], x[0]);
    countHalfTurns<wave>(argument[1], x[1]);
    countHalfTurns<wave>(argument[2], x[2]);
    countHalfTurns<wave>(argument[3], x[3]);
    const ext r0 = reducedToPiece<wave>(argument[0], x[0]);
    const ext r1 = reducedToPiece<wave>(argument[1], x[1]);
    const ext r2 = reducedToPiece<wave>(argument[2], x[2]);
    const ext r3 = reducedToPiece<wave>(argument[3], x[3]);
    storeWave(y[i + 3], r3, argument[3], pieces);
    storeWave(y[i + 2], r2, argument[2], pieces);
    storeWave(y[i + 1], r1, argument[1], pieces);
    storeWave(y[i], r0, argument[0], pieces);
}

template <Wave wave, ScalarCode scalarCode>
QORKES_INLINE void waveOfOne(int i, const double* a, double* y,
                             const SinePieces& pieces) {
    if (!isBelowLimit(a[i])) [[unlikely]]
        return handOver<scalarCode>(i, 1, a, y);
    WaveArgument argument;
    countHalfTurns<wave>(argument, a[i]);
    const ext r = reducedToPiece<wave>(argument, a[i]);
    storeWave(y[i], r, argument, pieces);
}

template <Wave wave, ScalarCode scalarCode>
QORKES_NOINLINE [[gnu::flatten]] void waves(int n, const double* a, double* y) {
    const SinePieces* pieces = inRegister(&sinePieces);
    inGroups<4>(
        n, [=](int i) { waveOfFour<wave, scalarCode>(i, a, y, *pieces); },
        [=](int i) { waveOfOne<wave, scalarCode>(i, a, y, *pieces); });
}

/// A reinitialised unit has lost the caller's exception masks too; they come back.
template <Wave wave, ScalarCode scalarCode>
QORKES_INLINE void wavesInFrame(int n, const double* a, double* y) {
    const uint16_t callers = controlWord();
    inFrame<Precision::bits64, Mxcsr::cleared, waves<wave, scalarCode>>(n, a, y);
    if (controlWord() != callers) setControlWord(callers);
}

} // namespace qorkes
