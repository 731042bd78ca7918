// zubs_cRadix4Fwd_32fc, zubs_cRadix4Inv_32fc, zubs_cRadix4FwdNorm_32fc,
// zubs_cRadix4InvNorm_32fc: complex FFT of 8 to 1024 points in single precision; and
// the tables they read.
//
// Radix 4 on four lanes (Cooley and Tukey, 1965). The first pass takes sixteen
// neighbours (an even order) or two times eight (an odd one), reading them one by one:
// so it can read them in place of a bit reversal as well. From then on the data stands
// split, in blocks of four real and four imaginary parts.
#include <signal/lanes.hpp>

using namespace qorkes;

namespace {

/// exp(-i pi k / 4) for k from 0 to 3.
alignas(16) constexpr float eighths[8] = {1.0f, 0.70710683f,  0.0f,  -0.70710683f,
                                          0.0f, -0.70710683f, -1.0f, -0.70710683f};
static_assert(hasPattern(eighths[1], 0x3F3504F4));

/// Joins four vectors with the residues 0, 2, 1, 3, as bit-reversed data has them.
template <Direction direction> QORKES_INLINE void butterfly(ComplexLanes (&v)[4]) {
    const ComplexLanes s0 = v[0] + v[1], d0 = v[0] - v[1];
    const ComplexLanes s1 = v[2] + v[3], d1 = v[2] - v[3];
    v[0] = s0 + s1;
    v[2] = s0 - s1;
    addTurned<direction>(d0, d1, v[1], v[3]);
}

/// The twiddles w, w^2, w^3 of one group of four angles.
constexpr int groupSize = 24;

template <Direction direction>
QORKES_INLINE void butterfly(ComplexLanes (&v)[4], const float* w) {
    v[1] = times<direction>(v[1], load<Layout::split>(w + 8));
    v[2] = times<direction>(v[2], load<Layout::split>(w));
    v[3] = times<direction>(v[3], load<Layout::split>(w + 16));
    butterfly<direction>(v);
}

/// Where the first pass finds its groups of four neighbours: lane k of vector b becomes
/// neighbour b of group i[k].
struct Neighbours {
    const float* x;
    QORKES_INLINE void load(ComplexLanes (&v)[4], const int (&i)[4]) const {
#pragma GCC unroll 2
        for (int b = 0; b < 4; b += 2) {
            const float* const first = x + 2 * b;
            v[b].re = _mm_loadu_ps(first + 8 * i[0]);
            v[b].im = _mm_loadu_ps(first + 8 * i[1]);
            v[b + 1].re = _mm_loadu_ps(first + 8 * i[2]);
            v[b + 1].im = _mm_loadu_ps(first + 8 * i[3]);
            _MM_TRANSPOSE4_PS(v[b].re, v[b].im, v[b + 1].re, v[b + 1].im);
        }
    }
};
struct Reversed {
    const float* x;
    const int32_t* reversal;
    int quarter; // in floats
    QORKES_INLINE void load(ComplexLanes (&v)[4], const int (&i)[4]) const {
        constexpr int residue[4] = {0, 2, 1, 3};
#pragma GCC unroll 4
        for (int b = 0; b < 4; ++b) {
            const float* const stream = x + residue[b] * quarter;
            v[b] = gather(stream + reversal[i[0]], stream + reversal[i[1]],
                          stream + reversal[i[2]], stream + reversal[i[3]]);
        }
    }
};

/// Sixteen points: four groups of four joined by radix 4 and then, with `w`, by radix
/// 4 again, or without, by radix 2 to two times eight. `g` is the first group.
template <Direction direction, Layout layout, bool even, class Source>
QORKES_INLINE void sixteen(const Source& source, int g, int groups, float* y,
                           const float* w) {
    const int g2 =
        g + (groups > 2 ? 2 : 0); // eight points stand in for the other eight
    ComplexLanes v[4];
    source.load(v, {g, g + 1, g2, g2 + 1});
    butterfly<direction>(v);
    transpose(v);
    if constexpr (even) {
        butterfly<direction>(v, w);
    } else {
        const ComplexLanes turn = load<Layout::split>(eighths);
#pragma GCC unroll 2
        for (int octet = 0; octet < 4; octet += 2) {
            const ComplexLanes a = v[octet], b = times<direction>(v[octet + 1], turn);
            v[octet] = a + b;
            v[octet + 1] = a - b;
        }
    }
    store<layout>(y, v[0]);
    store<layout>(y + 8, v[1]);
    if (groups > 2) {
        store<layout>(y + 16, v[2]);
        store<layout>(y + 24, v[3]);
    }
}

template <Direction direction, Layout layout, class Source>
void firstPass(const Source& source, float* y, int n, const float* w) {
    const int groups = n / 4;
    if (n & 0x55555555)
        for (int g = 0; g < groups; g += 4, y += 32)
            sixteen<direction, layout, true>(source, g, groups, y, w);
    else
        for (int g = 0; g < groups; g += 4, y += 32)
            sixteen<direction, layout, false>(source, g, groups, y, w);
}

/// Joins quarters of m points each, from x to y. The end of the table.
template <Direction direction, Layout layout, int m>
const float* pass(const float* x, float* y, int n, const float* table) {
    const float* w = table;
    for (const float* const end = x + 2 * n; x < end; x += 6 * m, y += 6 * m) {
        w = table;
        for (const float* const quarter = x + 2 * m; x < quarter;
             x += 8, y += 8, w += groupSize) {
            ComplexLanes v[4];
#pragma GCC unroll 4
            for (int k = 0; k < 4; ++k) v[k] = load<Layout::split>(x + 2 * k * m);
            butterfly<direction>(v, w);
#pragma GCC unroll 4
            for (int k = 0; k < 4; ++k) store<layout>(y + 2 * k * m, v[k]);
        }
    }
    return w;
}

/// The passes from quarter size m on; the last one goes to y, in the layout asked for.
template <Direction direction, Layout layout, int m>
void passes(float* work, float* y, int n, const float* w) {
    if constexpr (m <= 256) {
        if (n == 4 * m) {
            pass<direction, layout, m>(work, y, n, w);
        } else {
            w = pass<direction, Layout::split, m>(work, work, n, w);
            passes<direction, layout, 4 * m>(work, y, n, w);
        }
    }
}

/// From the source through `work` to y, which gets the layout asked for.
template <Direction direction, Layout layout, class Source>
void transform(const Source& source, float* work, float* y, int n, const float* table) {
    if (n <= 16) return firstPass<direction, layout>(source, y, n, table);
    firstPass<direction, Layout::split>(source, work, n, table);
    if (n & 0x55555555)
        passes<direction, layout, 16>(work, y, n, table + groupSize);
    else
        passes<direction, layout, 8>(work, y, n, table);
}

bool isAligned(const float* x) { return (reinterpret_cast<uintptr_t>(x) & 15) == 0; }

template <Direction direction>
void inPlace(float* data, int n, const float* table, float* buffer, int final) {
    float* const work = isAligned(data) ? data : buffer;
    const Neighbours source{data};
    if (final)
        transform<direction, Layout::pairs>(source, work, data, n, table);
    else
        transform<direction, Layout::split>(source, work, data, n, table);
}

template <Direction direction>
void fromNatural(const float* src, float* dst, int n, const float* table,
                 const int32_t* reversal, float* buffer) {
    float* const work = src != dst && isAligned(dst) ? dst : buffer;
    transform<direction, Layout::pairs>(Reversed{src, reversal, n / 2}, work, dst, n,
                                        table);
}

} // namespace

void zubs_initTabTwdBase_32f(int order, float* table) { fillSines(order, table); }

void zubs_initTabTwd_L1_32f(int order, const float* base, int baseOrder, float* table) {
    const Sines<float> sines{base, baseOrder};
    SplitWriter writer{table};
    for (int stage = order % 2 + 4; stage <= order; stage += 2)
        for (int j = 0; j < 1 << (stage - 2); j += 4)
            for (int power = 1; power <= 3; ++power)
                writer.write(sines, stage,
                             [=](int lane) { return (j + lane) * power; });
}

void zubs_cRadix4Fwd_32fc(float* data, int n, const float* table, float* buffer,
                          int final) {
    inPlace<Direction::forward>(data, n, table, buffer, final);
}
void zubs_cRadix4Inv_32fc(float* data, int n, const float* table, float* buffer,
                          int final) {
    inPlace<Direction::inverse>(data, n, table, buffer, final);
}
void zubs_cRadix4FwdNorm_32fc(const float* src, float* dst, int n, const float* table,
                              const int32_t* reversal, float* buffer) {
    fromNatural<Direction::forward>(src, dst, n, table, reversal, buffer);
}
void zubs_cRadix4InvNorm_32fc(const float* src, float* dst, int n, const float* table,
                              const int32_t* reversal, float* buffer) {
    fromNatural<Direction::inverse>(src, dst, n, table, reversal, buffer);
}
