// The rows for tasks of convolution and correlation, of the full result each: direct
// kernels and FFT kernels against loops that sum by the definition.
#include "arrays.hpp"
#include "driver.hpp"
#include "peers.hpp"

#include <qorkes/kes.h>

#include <stdexcept>

namespace qorkes::bench {
namespace {

struct Work {
    int job, mode, rank;
    int xshape[2], yshape[2];
};

std::shared_ptr<TaskRecord> newTask(const Work& work, int type, const int* zshape) {
    TaskRecord* task;
    if (__kesNewTask(&task, work.job, 0, work.mode, 0, type, work.rank, work.xshape,
                     work.yshape, zshape) != KesStatusOk)
        throw std::runtime_error("a task could not be made");
    return {task, [](TaskRecord* t) { __kesDeleteTask(&t); }};
}

template <class T> const SumPeer<T>& sumsOf(const Peers& peers) {
    if constexpr (sizeof(T) == sizeof(float))
        return peers.singleSums;
    else
        return peers.doubleSums;
}

template <class T> Contest contest(const Work& work) {
    int sizes[3] = {1, 1, 1}, zshape[2];
    for (int d = 0; d < work.rank; ++d) {
        zshape[d] = work.xshape[d] + work.yshape[d] - 1;
        sizes[0] *= work.xshape[d];
        sizes[1] *= work.yshape[d];
        sizes[2] *= zshape[d];
    }
    const auto task = newTask(
        work, sizeof(T) == sizeof(float) ? KesTaskSingle : KesTaskDouble, zshape);
    const auto x = randomArray<T>(sizes[0]), y = randomArray<T>(sizes[1]),
               z = randomArray<T>(sizes[2]);
    const auto peer = [=](const Peers& peers) -> std::function<void()> {
        const SumPeer<T>& sums = sumsOf<T>(peers);
        if (work.rank == 2)
            return [=, run = sums.convolveGrids] {
                run(x.get(), work.xshape, y.get(), work.yshape, z.get());
            };
        const bool convolution = work.job == KesTaskConvolution;
        return [=, run = convolution ? sums.convolveLines : sums.correlateLines] {
            run(x.get(), work.xshape[0], y.get(), work.yshape[0], z.get());
        };
    };
    return {[=] {
                __kesExec(task.get(), x.get(), nullptr, y.get(), nullptr, z.get(),
                          nullptr);
            },
            peer(narrowPeers()), peer(widePeers())};
}

struct NamedWork {
    const char *name, *size;
    Work work;
};

constexpr int conv = KesTaskConvolution, corr = KesTaskCorrelation;
constexpr int direct = KesTaskModeDirect, fft = KesTaskModeFft;
constexpr NamedWork works[] = {
    {"direct task", "1000 x 31", {conv, direct, 1, {1000}, {31}}},
    {"direct task", "31 x 1000", {conv, direct, 1, {31}, {1000}}},
    {"direct task", "512^2 x 7^2", {conv, direct, 2, {512, 512}, {7, 7}}},
    {"direct task", "7^2 x 512^2", {conv, direct, 2, {7, 7}, {512, 512}}},
    {"FFT task", "256 x 256", {conv, fft, 1, {256}, {256}}},
    {"FFT task", "1000 x 1000", {conv, fft, 1, {1000}, {1000}}},
    {"FFT task", "1000 in 10000", {corr, fft, 1, {1000}, {10000}}},
};

} // namespace

std::vector<SizedRow> taskRows() {
    std::vector<SizedRow> rows;
    for (const NamedWork& w : works) {
        rows.push_back({std::string("double ") + w.name, w.size, "loops",
                        [=] { return contest<double>(w.work); }});
        rows.push_back({std::string("float ") + w.name, w.size, "loops",
                        [=] { return contest<float>(w.work); }});
    }
    return rows;
}

} // namespace qorkes::bench
