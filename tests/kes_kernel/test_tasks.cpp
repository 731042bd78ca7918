// Tasks: making, editing, copying, deleting, the sticky status, and what is executed.
#include "operation.hpp"

#include <support/stack.hpp>

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cmath>
#include <cstdlib>

using namespace qorkes::test;

namespace {

/// A task that ends with its scope.
struct Task {
    TaskRecord* record = nullptr;

    explicit Task(const Operation& o, int mode = KesTaskModeAuto,
                  int type = KesTaskDouble) {
        EXPECT_EQ(__kesNewTask(&record, o.job, 0, mode, 0, type, o.rank, o.x.shape,
                               o.y.shape, o.z.shape),
                  KesStatusOk);
    }
    ~Task() { __kesDeleteTask(&record); }
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;

    int edit(int parameter, int value) {
        return __kesEditTask(record, parameter, &value);
    }
};

Operation lineOperation(int job, int nx, int ny, int nz) {
    Operation o = {job, 1, {{nx}, {1}}, {{ny}, {1}}, {{nz}, {1}}, {}, {1}};
    if (job == KesTaskCorrelation) o.start[0] = 1 - nx;
    return o;
}

TEST(Tasks, NewTaskKeepsItsOwnCopies) {
    int shapes[3][2] = {{2, 3}, {4, 5}, {6, 7}}, strides[2] = {8, 9};
    const double x = 0;
    TaskRecord* task;
    ASSERT_EQ(__kesNewTaskX(&task, 3, 11, 12, 13, 14, 2, shapes[0], shapes[1],
                            shapes[2], &x, strides),
              KesStatusOk);
    std::fill_n(shapes[0], 6, 0), std::fill_n(strides, 2, 0);
    EXPECT_EQ((std::array{task->job, task->callerWordA, task->mode, task->callerWordB,
                          task->dataType, task->internalType}),
              (std::array{3, 11, 12, 13, 14, 14}));
    EXPECT_EQ((std::array{task->xshape[1], task->yshape[1], task->zshape[1],
                          task->xstride[1]}),
              (std::array{3, 5, 7, 9}));
    EXPECT_EQ(task->x, &x);
    EXPECT_FALSE(task->start || task->decimation || task->editWord || task->committed);

    EXPECT_EQ(__kesNewTask(nullptr, 1, 0, 0, 0, 1, 0, 0, 0, 0), KesStatusNullPointer);
    EXPECT_EQ(__kesDeleteTask(&task), KesStatusOk);
    EXPECT_EQ(task, nullptr);
    EXPECT_EQ(__kesDeleteTask(&task), KesStatusOk);
    EXPECT_EQ(__kesDeleteTask(nullptr), KesStatusNullPointer);
}

TEST(Tasks, EditsAreKeptAndCopied) {
    Task task(lineOperation(1, 2, 3, 1));
    const std::pair<int, int> edits[] = {{KesTaskParamMode, 1},
                                         {KesTaskParamEditWord, 5},
                                         {KesTaskParamStart, 2},
                                         {KesTaskParamDecimation, 3},
                                         {KesTaskParamInternalType, 1}};
    for (const auto& [parameter, value] : edits)
        EXPECT_EQ(task.edit(parameter, value), KesStatusOk);
    EXPECT_EQ(__kesCommitTask(task.record), KesStatusOk);

    TaskRecord* copy;
    ASSERT_EQ(__kesCopyTask(&copy, task.record), KesStatusOk);
    EXPECT_EQ(copy->committed, 1);
    task.edit(KesTaskParamStart, 0), task.edit(KesTaskParamDecimation, 1);
    EXPECT_EQ(task.record->committed, 0);
    EXPECT_EQ(copy->start, copy->startStore);
    EXPECT_EQ((std::array{copy->mode, copy->editWord, copy->start[0],
                          copy->decimation[0], copy->internalType, copy->yshape[0]}),
              (std::array{1, 5, 2, 3, 1, 3}));
    __kesDeleteTask(&copy);
    EXPECT_EQ(__kesCopyTask(nullptr, task.record), KesStatusNullPointer);
    EXPECT_EQ(__kesCopyTask(&copy, nullptr), KesStatusNullPointer);
    EXPECT_EQ(__kesEditTask(nullptr, KesTaskParamMode, &copy), KesStatusNullPointer);
}

TEST(Tasks, FailuresStick) {
    const Operation o = lineOperation(1, 1, 1, 2); // one output too many
    const double x = 2, y = 3;
    double z[2] = {77, 77};
    const auto expectStuck = [&](Task& task, int status) {
        TaskRecord* copy = nullptr;
        const int committed = task.record->committed;
        EXPECT_EQ(__kesccGetStatus(task.record), status);
        EXPECT_EQ(__kesExec(task.record, nullptr, 0, &y, 0, z, 0), status);
        EXPECT_EQ(task.edit(KesTaskParamMode, 9), status);
        EXPECT_EQ(__kesCommitTask(task.record), status);
        EXPECT_EQ(__kesCopyTask(&copy, task.record), status);
        EXPECT_EQ(copy, nullptr);
        EXPECT_EQ(task.record->committed, committed);
        EXPECT_EQ(task.record->mode, KesTaskModeAuto);
    };
    for (int code = -1; code <= 21; ++code) {
        const bool editable = (code >= 3 && code <= 6) || code == 9;
        const int refusal = code < 1 || code > 19 ? KesStatusCcBadParameter
                            : editable            ? KesStatusNullPointer
                                                  : KesStatusCcFixedParameter;
        for (const void* value : {(const void*)nullptr, (const void*)&o}) {
            if (value && editable) continue;
            Task task(o);
            __kesCommitTask(task.record);
            const int status = value ? refusal : KesStatusNullPointer;
            EXPECT_EQ(__kesEditTask(task.record, code, value), status) << code;
            EXPECT_EQ(task.record->committed, 0);
            expectStuck(task, status);
        }
    }
    Task task(o);
    EXPECT_EQ(__kesExec(task.record, &x, 0, &y, 0, z, 0), KesStatusCcBadDecimation);
    EXPECT_EQ(task.record->committed, 1);
    expectStuck(task, KesStatusCcBadDecimation);
    EXPECT_EQ(__kesccSetStatus(task.record, -1), KesStatusCcBadDecimation);
    expectStuck(task, -1);
    EXPECT_EQ(z[0], 77);
    for (int rank : {1, 2}) { // whose first lag is no number of 32 bits
        Operation odd = lineOperation(2, 1, 1, 1);
        odd.rank = rank;
        odd.x.shape[0] = INT_MIN;
        Task shapeless(odd);
        EXPECT_EQ(__kesExec(shapeless.record, &x, 0, &y, 0, z, 0),
                  KesStatusCcBadXShape);
    }
    EXPECT_EQ(__kesExec(nullptr, &x, 0, &y, 0, z, 0), KesStatusNullPointer);
    EXPECT_EQ(__kesExecX(nullptr, &y, 0, z, 0), KesStatusNullPointer);
}

// Hooks see their arguments and an aligned stack, for callers that keep theirs to 4
// bytes as well.
struct Hooks {
    int status, calls;
    void* data;
} hooks;

[[gnu::noinline]] int callHook(void* privateData) {
    EXPECT_EQ(
        (reinterpret_cast<uintptr_t>(__builtin_frame_address(0)) + 2 * sizeof(void*)) %
            16,
        0u);
    ++hooks.calls;
    hooks.data = privateData;
    return hooks.status;
}
int releaseHook(TaskRecord*, void* privateData) { return callHook(privateData); }
int cloneHook(TaskRecord* newTask, void** newPrivateData, void* privateData) {
    EXPECT_EQ(newPrivateData, &newTask->privateData);
    *newPrivateData = std::malloc(1);
    const int status = callHook(privateData);
    if (status) std::free(*newPrivateData);
    return status;
}

int callStatus;
void copyTask(TaskRecord** copy, TaskRecord* task) {
    callStatus = __kesCopyTask(copy, task);
}
void deleteTask(TaskRecord** task) { callStatus = __kesDeleteTask(task); }

TEST(Tasks, PrivateDataGoesThroughItsHooks) {
    for (uintptr_t offset : {0, 4, 8, 12})
        for (int status : {0, 5}) {
            Task task(lineOperation(1, 1, 1, 1));
            void* const data = std::malloc(1);
            task.record->privateData = data;
            TaskRecord *copy = nullptr, **const copyAddress = &copy;
            EXPECT_EQ(__kesCopyTask(&copy, task.record), KesStatusCcCopyFailed);

            task.record->privateClone = cloneHook;
            task.record->privateRelease = releaseHook;
            hooks = {status, 0, nullptr};
            callOffBoundary(offset, copyTask, copyAddress, task.record);
            EXPECT_EQ(callStatus, status ? KesStatusCcCopyFailed : KesStatusOk);
            EXPECT_EQ(copy == nullptr, status != 0);
            EXPECT_EQ(hooks.data, data);

            TaskRecord** const taskAddress = &task.record;
            callOffBoundary(offset, deleteTask, taskAddress);
            EXPECT_EQ(callStatus, status ? KesStatusCcDeleteFailed : KesStatusOk);
            EXPECT_EQ(task.record, nullptr);
            EXPECT_EQ(hooks.data, data);
            EXPECT_EQ(hooks.calls, 2);
            if (copy) copy->privateRelease = nullptr;
            EXPECT_EQ(__kesDeleteTask(&copy), copy ? KesStatusCcDeleteFailed : 0);
        }
}

// ---- Which kernel is executed -------------------------------------------------------

/// Numbers of which every kernel makes something else: one of them is so large that the
/// error of a transform shows in the small results, where it does not enter.
template <class T> struct Telling {
    std::vector<T> x, y;

    explicit Telling(const Operation& o) {
        std::minstd_rand random(1);
        x = randomArray<T>(o.x.room(o.rank), random);
        y = randomArray<T>(o.y.room(o.rank), random);
        if (o.rank > 1) return;
        x[0] = T(1e15);
        for (size_t k = 0; k < y.size(); k += 3) y[k] = 0;
    }
    std::vector<T> result(const Operation& o, const Kernel<T>& kernel) const {
        std::vector<T> z(o.z.room(o.rank));
        EXPECT_EQ(kernel.run(o, x.data(), y.data(), z.data()), KesStatusOk);
        return z;
    }
};

struct Choice {
    int mode, dataType, internalType;
    bool decimated;
};

/// Executes the task of every choice and expects the result of its pair of kernels.
template <class T>
void expectChoices(const Operation& model,
                   const std::vector<std::pair<Choice, const Pair<T>*>>& rows) {
    for (int job : {1, 2, 3}) {
        Operation o = model;
        o.job = job == KesTaskConvolution ? job : KesTaskCorrelation;
        for (int d = 0; d < o.rank; ++d) o.start[d] = job == 2 ? 1 - o.x.shape[d] : 0;
        const Telling<T> data(o);
        for (const auto& [choice, kernels] : rows) {
            SCOPED_TRACE(testing::Message()
                         << "rank " << o.rank << ", job " << job << ", mode "
                         << choice.mode << ", types " << choice.dataType << " "
                         << choice.internalType << " " << choice.decimated);
            Task task(o, choice.mode, choice.dataType);
            task.record->job = job;
            task.edit(KesTaskParamInternalType, choice.internalType);
            if (choice.decimated)
                __kesEditTask(task.record, KesTaskParamDecimation, o.dec);
            std::vector<T> z(o.z.room(o.rank));
            const int status = __kesExec(task.record, data.x.data(), nullptr,
                                         data.y.data(), nullptr, z.data(), nullptr);
            EXPECT_EQ(status, kernels ? KesStatusOk : KesStatusCcNotImplemented);
            EXPECT_EQ(__kesccGetStatus(task.record), status);
            EXPECT_EQ(task.record->committed, 1);
            EXPECT_EQ(z, kernels ? data.result(o, (*kernels)[job != 1])
                                 : std::vector<T>(z.size()));
        }
    }
}

/// That the choices can be told apart.
template <class T>
void expectDifferent(const Operation& o, const std::vector<const Pair<T>*>& pairs) {
    std::vector<std::vector<T>> results;
    for (const auto* kernels : pairs)
        for (const auto& kernel : *kernels)
            results.push_back(Telling<T>(o).result(o, kernel));
    for (size_t i = 0; i < results.size(); ++i)
        for (size_t j = 0; j < i; ++j)
            EXPECT_NE(results[i], results[j]) << i << " " << j;
}

TEST(Execution, PicksTheKernelOfALine) {
    const Operation o = lineOperation(1, 64, 300, 290);
    expectDifferent<float>(o, {&ssDirect, &sdDirect, &ssFft, &sdFft});
    expectDifferent<double>(o, {&ddDirect, &ddFft});
    expectChoices<float>(o, {{{1, 1, 1, true}, &ssDirect},
                             {{1, 1, 1, false}, &ssDirect},
                             {{1, 1, 2, false}, &sdDirect},
                             {{1, 1, 0, true}, &sdDirect},
                             {{0, 1, 1, false}, &ssFft},
                             {{2, 1, 1, true}, &ssFft},
                             {{0, 1, 2, true}, &sdFft},
                             {{-3, 1, 7, false}, &sdFft}});
    expectChoices<double>(o, {{{1, 2, 2, false}, &ddDirect},
                              {{1, 0, 7, true}, &ddDirect},
                              {{1, 2, 1, false}, nullptr},
                              {{0, 2, 2, false}, &ddFft},
                              {{2, 7, 0, true}, &ddFft},
                              {{9, 2, 2, false}, &ddFft},
                              {{0, 2, 1, true}, nullptr},
                              {{2, 2, 1, false}, nullptr}});
}

TEST(Execution, PicksTheKernelOfAGrid) {
    const Operation o = {1,
                         3,
                         {{7, 6, 5}, {1, 7, 42}},
                         {{5, 8, 4}, {1, 5, 40}},
                         {{5, 8, 4}, {1, 5, 40}},
                         {},
                         {1, 1, 1}};
    expectDifferent<float>(o, {&ssAll, &sdAll});
    expectChoices<float>(o, {{{0, 1, 1, false}, &ssAll},
                             {{1, 1, 1, true}, &ssAll},
                             {{3, 1, 2, false}, &sdAll},
                             {{1, 1, 0, true}, &sdAll},
                             {{2, 1, 1, false}, nullptr},
                             {{2, 1, 2, false}, nullptr}});
    expectChoices<double>(o, {{{0, 2, 2, false}, &ddAll},
                              {{1, 0, 1, true}, &ddAll},
                              {{-1, 2, 1, false}, &ddAll},
                              {{2, 2, 2, false}, nullptr}});
}

TEST(Execution, OfRankZeroComputesNothing) {
    double x = 1, z = 77;
    Operation o = lineOperation(1, 1, 1, 1);
    o.rank = 0;
    for (int mode : {0, 1, 2}) {
        Task task(o, mode);
        EXPECT_EQ(__kesExec(task.record, &x, nullptr, &x, nullptr, &z, nullptr),
                  mode == 2 ? KesStatusCcNotImplemented : KesStatusOk);
    }
    EXPECT_EQ(z, 77);
}

// Strides of the caller's, a fixed x, and starts and decimations that are set.
TEST(Execution, PassesOnWhatIsGiven) {
    std::minstd_rand random(5);
    for (int round = 0; round < 200; ++round) {
        const Operation o = chooseOperation(1 + round % 7, 30, random);
        const auto x = randomArray<double>(o.x.room(o.rank), random);
        const auto y = randomArray<double>(o.y.room(o.rank), random);
        std::vector<double> z(o.z.room(o.rank)), expected = z, fixed = z;
        const auto& kernels = o.rank == 1 ? ddDirect : ddAll;
        kernels[o.job - 1].run(o, x.data(), y.data(), expected.data());

        TaskRecord* task;
        __kesNewTaskX(&task, o.job, 0, KesTaskModeDirect, 0, KesTaskDouble, o.rank,
                      o.x.shape, o.y.shape, o.z.shape, x.data(), o.x.stride);
        __kesEditTask(task, KesTaskParamStart, o.start);
        __kesEditTask(task, KesTaskParamDecimation, o.dec);
        EXPECT_EQ(__kesExec(task, x.data(), o.x.stride, y.data(), o.y.stride, z.data(),
                            o.z.stride),
                  KesStatusOk);
        EXPECT_EQ(z, expected);
        EXPECT_EQ(__kesExecX(task, y.data(), o.y.stride, fixed.data(), o.z.stride),
                  KesStatusOk);
        EXPECT_EQ(fixed, expected);
        __kesDeleteTask(&task);
    }
    double y = 1, z = 77;
    Task withoutX(lineOperation(1, 1, 1, 1));
    EXPECT_EQ(__kesExecX(withoutX.record, &y, nullptr, &z, nullptr), KesStatusCcNullX);
}

} // namespace
