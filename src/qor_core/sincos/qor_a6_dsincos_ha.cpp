// _qordSinCos_HA: y = sin(a), z = cos(a) in double precision, largest error 0.53 ulp.
//
// x less a multiple of pi/2, in four parts at 64-bit precision; then, for r in
// [-pi/4, pi/4], an odd and an even polynomial of the piece that |r| lies in, with 576
// pieces to a half turn. An odd multiple swaps the two.
//
//   |x| >= 128000, infinity, NaN   the group goes to _qordSinCos_SC_HA
#include <qor_core/_heap/trig_groups.hpp>

using namespace qorkes;

namespace {

#include "qor_a6_dsincos_tables.inc"

constexpr double piecesPerRadian = 0x1.6eb167b830193p+7; // 576/pi
static_assert(piecesPerRadian == 183.34649444186343);

/// The tables by rows: sin(r) / r from its term in r^2 on, cos(r) from that in r^4 on.
struct alignas(64) SinCosPiece {
    double sine[4], cosine[4];
};
struct SinCosPieces {
    SinCosPiece rows[145];

    constexpr SinCosPieces() : rows{} {
        for (int i = 0; i < 145; ++i)
            rows[i] = {{sinCosS0[i], sinCosS1[i], sinCosS2[i], sinCosS3[i]},
                       {sinCosC0[i], sinCosC1[i], sinCosC2[i], sinCosC3[i]}};
    }
};
constexpr SinCosPieces sinCosPieces;

struct Kernel : DoubleLimit {
    struct Argument {
        int32_t quarterTurns;
        int32_t piece; // signed as r is
    };
    const SinCosPieces* pieces = inRegister(&sinCosPieces);

    QORKES_INLINE static void count(Argument& argument, const double& x) {
        countQuarterTurns(argument.quarterTurns, x);
    }
    QORKES_INLINE static ext reduce(Argument& argument, const double& x) {
        const ext r = reducedByQuarterTurns(x, argument.quarterTurns);
        storeNearest(argument.piece, loadedHere(piecesPerRadian) * r);
        return r;
    }

    QORKES_INLINE void store(ext r, const Argument& argument, const double& x,
                             double* y, double* z) const {
        const SinCosPiece& row = pieces->rows[__builtin_abs(argument.piece)];
        const auto turns = static_cast<uint32_t>(argument.quarterTurns);
        const uint32_t odd = turns & 1;
        const uint32_t zero = signOfZero(x);
        const ext r2 = r * r;
        const ext s = r * r2 * polynomial<4>(row.sine, r2) + r;
        storeFlipped(odd ? *z : *y, s, (turns + odd) << 30 ^ zero);
        const ext c = (polynomial<4>(row.cosine, r2) * r2 - 0.5L) * r2 + 1.0L;
        storeFlipped(odd ? *y : *z, c, (turns - odd) << 30);
    }
    QORKES_COLD static void handOver(int i, int count, const double* a, double* y,
                                     double* z) {
        for (int k = i; k < i + count; ++k) _qordSinCos_SC_HA(k, a, y, z, nullptr);
    }
};

} // namespace

void _qordSinCos_HA(int n, const double* a, double* y, double* z) {
    inFrame<Precision::bits64, Mxcsr::cleared,
            evaluate<Kernel, double, double, double>>(n, a, y, z);
}
