// Executes a task: fills in what is left open, picks the kernel, keeps its status.
#include <kes_kernel/_service/task_record.hpp>

using namespace qorkes;

namespace {

constexpr int32_t units[KesTaskMaxRank] = {1, 1, 1, 1, 1, 1, 1};
constexpr int32_t zeros[KesTaskMaxRank] = {};

/// Of a shape that the kernel has not tested yet.
int32_t firstLagOf(int32_t xshape) {
    return static_cast<int32_t>(1 - static_cast<uint32_t>(xshape));
}

/// An execution with nothing left open.
struct Execution {
    const TaskRecord* task;
    const void* x;
    const int32_t* xstride;
    const void* y;
    const int32_t* ystride;
    void* z;
    const int32_t *zstride, *start, *decimation;
};

template <class Kernel> struct Pair {
    Kernel *convolution, *correlation;

    Kernel* of(const TaskRecord& task) const {
        return task.job == KesTaskConvolution ? convolution : correlation;
    }
};

template <class T, class Kernel, class... Decimation>
int runLine(const Execution& e, const Pair<Kernel>& kernels, Decimation... decimation) {
    const TaskRecord& task = *e.task;
    return kernels.of(task)(static_cast<const T*>(e.x), e.xstride[0],
                            static_cast<const T*>(e.y), e.ystride[0],
                            static_cast<T*>(e.z), e.zstride[0], task.xshape[0],
                            task.yshape[0], e.start[0], task.zshape[0], decimation...);
}

template <class T, class Kernel>
int runAll(const Execution& e, const Pair<Kernel>& kernels) {
    const TaskRecord& task = *e.task;
    return kernels.of(task)(task.rank, static_cast<const T*>(e.x), task.xshape,
                            e.xstride, static_cast<const T*>(e.y), task.yshape,
                            e.ystride, static_cast<T*>(e.z), task.zshape, e.zstride,
                            e.start, e.decimation);
}

using LineD = Pair<KesTaskKernelD>;
using LineS = Pair<KesTaskKernelS>;
constexpr LineD ddDirect = {_kesConvDDDirect1D_dec, _kesCorrDDDirect1D_dec};
constexpr LineS sdDirect = {_kesConvSDDirect1D_dec, _kesCorrSDDirect1D_dec};
constexpr LineS ssDirect = {_kesConvSSDirect1D_dec, _kesCorrSSDirect1D_dec};
constexpr Pair<KesTaskKernelNodecS> ssDirectNodec = {_kesConvSSDirect1D_nodec,
                                                     _kesCorrSSDirect1D_nodec};
constexpr LineD ddFft = {_kesConvDDFft1D_dec, _kesCorrDDFft1D_dec};
constexpr LineS sdFft = {_kesConvSDFft1D_dec, _kesCorrSDFft1D_dec};
constexpr LineS ssFft = {_kesConvSSFft1D_dec, _kesCorrSSFft1D_dec};
constexpr Pair<KesTaskKernelAllD> ddAll = {_kesConvDDDirectAll_dec,
                                           _kesCorrDDDirectAll_dec};
constexpr Pair<KesTaskKernelAllS> sdAll = {_kesConvSDDirectAll_dec,
                                           _kesCorrSDDirectAll_dec};
constexpr Pair<KesTaskKernelAllS> ssAll = {_kesConvSSDirectAll_dec,
                                           _kesCorrSSDirectAll_dec};

int executeLine(const Execution& e) {
    const TaskRecord& task = *e.task;
    const bool floats = task.dataType == KesTaskSingle;
    const bool single = task.internalType == KesTaskSingle;
    const bool direct = task.mode == KesTaskModeDirect;
    if (!floats && single) return KesStatusCcNotImplemented;
    const int32_t decimation = e.decimation[0];
    if (!floats) return runLine<double>(e, direct ? ddDirect : ddFft, decimation);
    if (!single) return runLine<float>(e, direct ? sdDirect : sdFft, decimation);
    if (direct && !task.decimation) return runLine<float>(e, ssDirectNodec);
    return runLine<float>(e, direct ? ssDirect : ssFft, decimation);
}

int executeAll(const Execution& e) {
    const TaskRecord& task = *e.task;
    if (task.mode == KesTaskModeFft) return KesStatusCcNotImplemented;
    if (task.dataType != KesTaskSingle) return runAll<double>(e, ddAll);
    return runAll<float>(e, task.internalType == KesTaskSingle ? ssAll : sdAll);
}

int execute(const TaskRecord& task, const void* x, const int* xstride, const void* y,
            const int* ystride, void* z, const int* zstride) {
    int32_t xdense[KesTaskMaxRank], ydense[KesTaskMaxRank], zdense[KesTaskMaxRank];
    int32_t firstLags[KesTaskMaxRank];
    Execution e = {&task,   x,          xstride,
                   y,       ystride,    z,
                   zstride, task.start, task.decimation ? task.decimation : units};
    if (!xstride) e.xstride = convgate_stride(xdense, task.xshape, task.rank);
    if (!ystride) e.ystride = convgate_stride(ydense, task.yshape, task.rank);
    if (!zstride) e.zstride = convgate_stride(zdense, task.zshape, task.rank);
    if (!task.start && task.job == KesTaskCorrelation) {
        for (int d = 0; d < task.rank; ++d) firstLags[d] = firstLagOf(task.xshape[d]);
        e.start = firstLags;
    } else if (!task.start) {
        e.start = zeros;
    }
    return task.rank == 1 ? executeLine(e) : executeAll(e);
}

} // namespace

int __kesExec(TaskRecord* task, const void* x, const int* xstride, const void* y,
              const int* ystride, void* z, const int* zstride) {
    if (!task) return KesStatusNullPointer;
    int status = task->status;
    if (status == KesStatusOk && !task->committed) status = __kesCommitTask(task);
    if (status == KesStatusOk)
        status = execute(*task, x, xstride, y, ystride, z, zstride);
    __kesccSetStatus(task, status);
    return status;
}

int __kesExecX(TaskRecord* task, const void* y, const int* ystride, void* z,
               const int* zstride) {
    if (!task) return KesStatusNullPointer;
    return __kesExec(task, task->x, task->xstride, y, ystride, z, zstride);
}
