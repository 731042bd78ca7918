// The kernels of double Sin and Cos: x less a multiple of pi (for the cosine an odd
// multiple of pi/2), in four parts at 64-bit precision; then, for r in [-pi/2, pi/2],
// the odd polynomial of the piece that |r| lies in.
#pragma once

#include <qor_core/_heap/trig_groups.hpp>

namespace qorkes {

#include "_qor_sin_piece_tables.inc"

constexpr double piecesPerRadian = 0x1.436720cee34f2p+5; // 127/pi
static_assert(piecesPerRadian == 40.42535554534142);

/// The five tables by rows: sin(r) / r from its term in r^2 on.
struct SinePieces {
    double rows[65][5];

    constexpr SinePieces() : rows{} {
        for (int i = 0; i < 65; ++i) {
            rows[i][0] = sinPieceT0[i];
            rows[i][1] = sinPieceT1[i];
            rows[i][2] = sinPieceT2[i];
            rows[i][3] = sinPieceT3[i];
            rows[i][4] = sinPieceT4[i];
        }
    }
};
constexpr SinePieces sinePieces;

template <Wave wave, auto scalarCode> struct WaveKernel : DoubleLimit {
    struct Argument {
        int32_t halfTurns;
        int32_t piece; // signed as r is
    };
    const SinePieces* pieces = inRegister(&sinePieces);

    QORKES_INLINE static void count(Argument& argument, const double& x) {
        countHalfTurns<wave>(argument.halfTurns, x);
    }
    QORKES_INLINE static ext reduce(Argument& argument, const double& x) {
        const ext r = reducedByHalfTurns<wave>(x, argument.halfTurns);
        storeNearest(argument.piece, loadedHere(piecesPerRadian) * r);
        return r;
    }

    QORKES_INLINE void store(ext r, const Argument& argument, const double& x,
                             double* y) const {
        const double* c = pieces->rows[__builtin_abs(argument.piece)];
        const uint32_t zero = wave == Wave::sine ? signOfZero(x) : 0;
        const ext r2 = r * r;
        storeFlipped(*y, r * r2 * polynomial<5>(c, r2) + r,
                     static_cast<uint32_t>(argument.halfTurns) << 31 ^ zero);
    }

    /// The x87 unit is reinitialised before: its exception flags are lost, and the rest
    /// of the array is computed under the control word of a fresh unit, of the same
    /// precision and rounding.
    QORKES_COLD static void handOver(int i, int count, const double* a, double* y) {
        asm volatile("fninit");
        for (int k = i; k < i + count; ++k) scalarCode(k, a, y, nullptr);
    }
};

/// A reinitialised unit has lost the caller's exception masks too; they come back.
template <Wave wave, auto scalarCode>
QORKES_INLINE void wavesInFrame(int n, const double* a, double* y) {
    const uint16_t callers = controlWord();
    inFrame<Precision::bits64, Mxcsr::cleared,
            evaluate<WaveKernel<wave, scalarCode>, double, double>>(n, a, y);
    if (controlWord() != callers) setControlWord(callers);
}

} // namespace qorkes
