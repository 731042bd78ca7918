// One convolution or correlation as numbers, apart from any task, and what it should
// give: every output by its definition, summed in the order that the kernels state.
#pragma once

#include <qorkes/kes.h>

#include <algorithm>
#include <random>
#include <vector>

namespace qorkes::test {

struct Array {
    int shape[7], stride[7];

    long offset(int rank, const int* index) const {
        long at = 0;
        for (int d = 0; d < rank; ++d)
            at +=
                (stride[d] < 0 ? index[d] - shape[d] + 1 : index[d]) * long{stride[d]};
        return at;
    }
    /// Elements from the lowest to the highest address.
    size_t room(int rank) const {
        size_t last = 0;
        for (int d = 0; d < rank; ++d)
            last += size_t(shape[d] - 1) * size_t(std::abs(stride[d]));
        return last + 1;
    }
};

struct Operation {
    int job, rank;
    Array x, y, z;
    int start[7], dec[7];

    int firstPlace(int d) const {
        return job == KesTaskConvolution ? 0 : 1 - x.shape[d];
    }
    int lastPlace(int d) const { return firstPlace(d) + x.shape[d] + y.shape[d] - 2; }
};

/// Calls body(index) with every index, dimensions from `first` to rank - 1, from the
/// lowest indices `low` to below `end`; the lower ones stay as they are in `low`.
template <class Body>
void forEachIndex(int first, int rank, const int* low, const int* end, Body body) {
    int index[7];
    std::copy_n(low, rank, index);
    for (int d = first; d < rank; ++d)
        if (low[d] >= end[d]) return;
    for (int d = first - 1; d < rank;) {
        body(index);
        for (d = first; d < rank; ++d) {
            if (++index[d] < end[d]) break;
            index[d] = low[d];
        }
    }
}

/// How a sum goes on by a product, what is kept of it between two runs along dimension
/// 0, and of what precision it is.
struct Extended {
    static constexpr long double epsilon = 0x1p-63L;
    static long double step(long double sum, long double a, long double b) {
        return sum + a * b;
    }
    static long double kept(long double sum) {
        volatile double rounded = static_cast<double>(sum);
        return rounded;
    }
};
struct Single {
    static constexpr long double epsilon = 0x1p-23L;
    static long double step(long double sum, long double a, long double b) {
        volatile float product = static_cast<float>(a * b);
        volatile float next = static_cast<float>(sum + product);
        return next;
    }
    static long double kept(long double sum) { return sum; }
};

/// Output q. Four neighbours (in dimension 1, or in the only one) without decimation
/// sum first what they have in common.
template <class Arithmetic, class T>
long double output(const Operation& o, const T* x, const T* y, const int* q) {
    const int across = o.rank == 1 ? 0 : 1;
    const bool tiles = o.dec[0] == 1 && o.dec[across] == 1;
    const int tile = q[across] / 4 * 4;
    int low[7], end[7], lag[7];
    const auto overlap = [&](int d, int place) {
        lag[d] = o.start[d] + place * o.dec[d];
        if (o.job == KesTaskConvolution) lag[d] -= o.x.shape[d] - 1;
        low[d] = std::max(0, -lag[d]);
        end[d] = std::min(o.x.shape[d], o.y.shape[d] - lag[d]);
    };
    int first = 0, last = 1 << 30;
    for (int j = 0; tiles && j < 4; ++j) {
        overlap(across, tile + j);
        first = std::max(first, low[across]);
        last = std::min(last, end[across]);
    }
    for (int d = 0; d < o.rank; ++d) overlap(d, q[d]);
    const int whole[2] = {low[across], end[across]};
    std::vector<std::pair<int, int>> parts = {{whole[0], whole[1]}};
    if (tiles && tile + 3 < o.z.shape[across] && first < last)
        parts = {{first, last}, {whole[0], first}, {last, whole[1]}};

    long double sum = 0;
    for (const auto& [from, to] : parts) {
        low[across] = from, end[across] = to;
        forEachIndex(1, o.rank, low, end, [&](const int* index) {
            int p[7], at[7];
            std::copy_n(index, o.rank, p);
            for (p[0] = low[0]; p[0] < end[0]; ++p[0]) {
                int mirrored[7];
                for (int d = 0; d < o.rank; ++d) {
                    at[d] = p[d] + lag[d];
                    mirrored[d] =
                        o.job == KesTaskConvolution ? o.x.shape[d] - 1 - p[d] : p[d];
                }
                sum = Arithmetic::step(sum, x[o.x.offset(o.rank, mirrored)],
                                       y[o.y.offset(o.rank, at)]);
            }
            if (o.rank > 1) sum = Arithmetic::kept(sum);
        });
    }
    return sum;
}

/// Strides of one of the kinds dense, negative, sparse and (if allowed) zero. Those of
/// the last three are never dense in dimension 1 and up.
inline void chooseStrides(Array& array, int rank, bool zeros,
                          std::minstd_rand& random) {
    const bool dense = random() % 3 == 0;
    int next = 1;
    for (int d = 0; d < rank; ++d) {
        array.stride[d] = dense ? next : next + 1 + int(random() % 2);
        next = (dense ? next : array.stride[d]) * array.shape[d];
        if (!dense && random() % 2) array.stride[d] *= -1;
        if (!dense && zeros && random() % 5 == 0) array.stride[d] = 0;
    }
}

/// Anything that a kernel of this rank takes; of rank 1 up to `longest` elements.
inline Operation chooseOperation(int rank, int longest, std::minstd_rand& random) {
    static constexpr unsigned largest[] = {0, 0, 14, 6, 4, 3, 3, 2};
    Operation o = {};
    o.job = 1 + int(random() % 2);
    o.rank = rank;
    for (int d = 0; d < rank; ++d) {
        const unsigned most = rank == 1 ? unsigned(longest) : largest[rank];
        o.x.shape[d] = 1 + int(random() % most);
        o.y.shape[d] = 1 + int(random() % most);
        const int places = o.x.shape[d] + o.y.shape[d] - 1;
        const int skipped = int(random() % unsigned(places));
        o.start[d] = o.firstPlace(d) + (random() % 2 ? skipped : 0);
        o.dec[d] = random() % 3 ? 1 : 1 + int(random() % 4);
        const int left = (o.lastPlace(d) - o.start[d]) / o.dec[d] + 1;
        o.z.shape[d] = random() % 2 ? left : 1 + int(random() % unsigned(left));
    }
    chooseStrides(o.x, rank, true, random);
    chooseStrides(o.y, rank, true, random);
    chooseStrides(o.z, rank, false, random);
    return o;
}

template <class T> std::vector<T> randomArray(size_t n, std::minstd_rand& random) {
    std::uniform_real_distribution<T> uniform(-1, 1);
    std::vector<T> x(n);
    for (T& v : x) v = uniform(random);
    return x;
}

/// The kernels of a data type, with the arguments of an operation.
template <class T> struct Kernel {
    const char* name;
    int job;
    int (*run)(const Operation& o, const T* x, const T* y, T* z);
};

template <auto entry, class T>
int runLine(const Operation& o, const T* x, const T* y, T* z) {
    return entry(x, o.x.stride[0], y, o.y.stride[0], z, o.z.stride[0], o.x.shape[0],
                 o.y.shape[0], o.start[0], o.z.shape[0], o.dec[0]);
}
template <auto entry, class T>
int runAll(const Operation& o, const T* x, const T* y, T* z) {
    return entry(o.rank, x, o.x.shape, o.x.stride, y, o.y.shape, o.y.stride, z,
                 o.z.shape, o.z.stride, o.start, o.dec);
}

#define KERNELS(T, run, name)                                                          \
    {                                                                                  \
        {"Conv" #name, KesTaskConvolution, run<_kesConv##name##_dec, T>}, {            \
            "Corr" #name, KesTaskCorrelation, run<_kesCorr##name##_dec, T>             \
        }                                                                              \
    }

template <class T> using Pair = Kernel<T>[2];
inline constexpr Pair<double> ddDirect = KERNELS(double, runLine, DDDirect1D);
inline constexpr Pair<double> ddFft = KERNELS(double, runLine, DDFft1D);
inline constexpr Pair<double> ddAll = KERNELS(double, runAll, DDDirectAll);
inline constexpr Pair<float> sdDirect = KERNELS(float, runLine, SDDirect1D);
inline constexpr Pair<float> sdFft = KERNELS(float, runLine, SDFft1D);
inline constexpr Pair<float> sdAll = KERNELS(float, runAll, SDDirectAll);
inline constexpr Pair<float> ssDirect = KERNELS(float, runLine, SSDirect1D);
inline constexpr Pair<float> ssFft = KERNELS(float, runLine, SSFft1D);
inline constexpr Pair<float> ssAll = KERNELS(float, runAll, SSDirectAll);
#undef KERNELS

} // namespace qorkes::test
