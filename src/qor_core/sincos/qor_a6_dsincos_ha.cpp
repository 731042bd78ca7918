// _qordSinCos_HA: y = sin(a), z = cos(a) in double precision, largest error 0.55 ulp.
//
// x less a multiple of pi/2, in four parts at 64-bit precision; then, for r in
// [-pi/4, pi/4], an odd and an even polynomial of the piece that |r| lies in, with 576
// pieces to a half turn. An odd multiple swaps the two.
//
//   |x| >= 128000, infinity, NaN   the group goes to _qordSinCos_SC_HA
#include <qor_core/_heap/trig_groups.hpp>
#include <qor_core/frame.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_dsincos_tables.inc"

constexpr double piecesPerRadian = 0x1.6eb167b830193p+7; // 576/pi
static_assert(piecesPerRadian == 183.34649444186343);

/// The tables by rows: sin(r) / r from its term in r^2 on, cos(r) from that in r^4 on.
struct alignas(64) SinCosPiece {
    double S0, S1, S2, S3;
    double C0, C1, C2, C3;
};
struct SinCosPieces {
    SinCosPiece rows[145];

    constexpr SinCosPieces() : rows{} {
        for (int i = 0; i < 145; ++i)
            rows[i] = {sinCosS0[i], sinCosS1[i], sinCosS2[i], sinCosS3[i],
                       sinCosC0[i], sinCosC1[i], sinCosC2[i], sinCosC3[i]};
    }
};
constexpr SinCosPieces sinCosPieces;

/// An element on its way: x = r + a count of quarter turns.
struct Argument {
    int32_t count;
    int32_t piece; // signed as r is
};

QORKES_INLINE ext reducedToPiece(Argument& argument, const double& x) {
    const ext r = reduced(x, loadInteger(argument.count), quarterTurn);
    storeNearest(argument.piece, loadedHere(piecesPerRadian) * r);
    return r;
}

/// The last step of the sine is a product, which keeps the sign of a zero, where a sum
/// would lose it.
QORKES_INLINE void storeBoth(double* y, double* z, ext r, const Argument& argument,
                             const SinCosPieces& pieces) {
    const SinCosPiece& row = pieces.rows[__builtin_abs(argument.piece)];
    const auto count = static_cast<uint32_t>(argument.count);
    const uint32_t odd = count & 1;
    const ext r2 = r * r;
    ext s = loadedHere(row.S3);
    s = s * r2 + row.S2;
    s = s * r2 + row.S1;
    s = s * r2 + row.S0;
    s = s * r2 + 1.0L;
    storeFlipped(odd ? *z : *y, s * r, (count + odd) << 30);
    ext c = loadedHere(row.C3);
    c = c * r2 + row.C2;
    c = c * r2 + row.C1;
    c = c * r2 + row.C0;
    c = c * r2 - 0.5L;
    c = c * r2 + 1.0L;
    storeFlipped(odd ? *y : *z, c, (count - odd) << 30);
}

QORKES_INLINE void sinCosOfFour(int i, const double* a, double* y, double* z,
                                const SinCosPieces& pieces) {
    if (!areFourBelowLimit(a + i)) [[unlikely]] {
        for (int k = 0; k < 4; ++k) _qordSinCos_SC_HA(i + k, a, y, z, nullptr);
        return;
    }
    const double* x = a + i;
    Argument argument[4];
    storeNearest(argument[0].count, loadedHere(quarterTurn.inverse) * x[0]);
    storeNearest(argument[1].count, loadedHere(quarterTurn.inverse) * x[1]);
    storeNearest(argument[2].count, loadedHere(quarterTurn.inverse) * x[2]);
    storeNearest(argument[3].count, loadedHere(quarterTurn.inverse) * x[3]);
    const ext r0 = reducedToPiece(argument[0], x[0]);
    const ext r1 = reducedToPiece(argument[1], x[1]);
    const ext r2 = reducedToPiece(argument[2], x[2]);
    const ext r3 = reducedToPiece(argument[3], x[3]);
    storeBoth(y + i + 3, z + i + 3, r3, argument[3], pieces);
    storeBoth(y + i + 2, z + i + 2, r2, argument[2], pieces);
    storeBoth(y + i + 1, z + i + 1, r1, argument[1], pieces);
    storeBoth(y + i, z + i, r0, argument[0], pieces);
}

QORKES_INLINE void sinCosOfOne(int i, const double* a, double* y, double* z,
                               const SinCosPieces& pieces) {
    if (!isBelowLimit(a[i])) [[unlikely]]
        return _qordSinCos_SC_HA(i, a, y, z, nullptr);
    Argument argument;
    storeNearest(argument.count, loadedHere(quarterTurn.inverse) * a[i]);
    const ext r = reducedToPiece(argument, a[i]);
    storeBoth(y + i, z + i, r, argument, pieces);
}

QORKES_NOINLINE [[gnu::flatten]] void sinesAndCosines(int n, const double* a, double* y,
                                                      double* z) {
    const SinCosPieces* pieces = inRegister(&sinCosPieces);
    inGroups<4>(
        n, [=](int i) { sinCosOfFour(i, a, y, z, *pieces); },
        [=](int i) { sinCosOfOne(i, a, y, z, *pieces); });
}

} // namespace

void _qordSinCos_HA(int n, const double* a, double* y, double* z) {
    inFrame<Precision::bits64, Mxcsr::cleared, sinesAndCosines>(n, a, y, z);
}
