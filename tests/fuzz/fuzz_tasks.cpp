// Random legal calls over the tasks of convolution and correlation, against a model of
// each task's record. Data are multiples of 1/64 from -1 to 1, so that direct sums are
// exact in every precision and order; transforms keep to their bound.
#include "fuzz.hpp"

#include <kes_kernel/operation.hpp>

#include <array>
#include <climits>
#include <cmath>
#include <memory>
#include <utility>

using namespace qorkes::fuzz;
using qorkes::test::Array;
using qorkes::test::Operation;

namespace {

enum Hook { none, working, failing };

/// A task, and what its record should be.
struct Subject {
    TaskRecord* task = nullptr;
    int status = KesStatusOk;
    int job = 0, wordA = 0, mode = 0, editWord = 0, wordB = 0;
    int dataType = 0, internalType = 0, committed = 0;
    Operation shapes = {};           // with the starts and decimations that hold
    bool start = false, dec = false; // whether those were set
    std::shared_ptr<void> x;         // the fixed operand
    bool xstride = false;
    bool privateData = false;
    Hook clone = none, release = none;

    bool floats() const { return dataType == KesTaskSingle; }
    bool single() const { return internalType == KesTaskSingle; }
};

int cloneData(TaskRecord*, void** copy, void*) {
    *copy = std::malloc(1);
    return 0;
}
int failToClone(TaskRecord*, void**, void*) { return 1; }
int releaseData(TaskRecord*, void*) { return 0; }
int failToRelease(TaskRecord*, void*) { return 1; }

void expectWords(const int32_t* field, const int32_t* store, const int* words, int rank,
                 bool set) {
    require(field == (set ? store : nullptr), "a field of the task's own store");
    if (set)
        require(std::equal(words, words + rank, field), "an array as it was given");
}

void inspect(const Subject& s) {
    const TaskRecord& task = *s.task;
    const Operation& o = s.shapes;
    require(__kesccGetStatus(s.task) == s.status, "the status");
    require(task.job == s.job && task.callerWordA == s.wordA &&
                task.callerWordB == s.wordB && task.dataType == s.dataType &&
                task.rank == o.rank && task.x == s.x.get(),
            "what was given at first");
    require(task.mode == s.mode && task.editWord == s.editWord &&
                task.internalType == s.internalType,
            "what was edited");
    require(task.committed == s.committed, "whether it is committed");
    require((task.privateData != nullptr) == s.privateData, "private data");
    expectWords(task.start, task.startStore, o.start, o.rank, s.start);
    expectWords(task.decimation, task.decimationStore, o.dec, o.rank, s.dec);
    expectWords(task.xshape, task.xshapeStore, o.x.shape, o.rank, true);
    expectWords(task.yshape, task.yshapeStore, o.y.shape, o.rank, true);
    expectWords(task.zshape, task.zshapeStore, o.z.shape, o.rank, true);
    expectWords(task.xstride, task.xstrideStore, o.x.stride, o.rank, s.xstride);
}

void drop(Subject& s) {
    if (!s.task) return;
    const bool fails = s.privateData && s.release != working;
    require(__kesDeleteTask(&s.task) == (fails ? KesStatusCcDeleteFailed : 0),
            "the status of a deletion");
    require(!s.task, "a deletion");
    s = {};
}

std::minstd_rand newRandom(Choices& choices) {
    return std::minstd_rand(1 + choices.below(65536));
}

/// Now and then a shape that no kernel takes.
void spoilShapes(Operation& o, Choices& choices) {
    if (o.rank == 0 || choices.below(6) != 0) return;
    const unsigned d = choices.below(static_cast<unsigned>(o.rank));
    Array* const arrays[] = {&o.x, &o.y, &o.z};
    const int entries[] = {0, -1, INT_MIN, INT_MAX};
    const unsigned which = choices.below(3);
    // INT_MAX elements are legal of x and y.
    arrays[which]->shape[d] = entries[choices.below(which == 2 ? 4 : 3)];
}

void setDefaults(Subject& s) {
    Operation& o = s.shapes;
    for (int d = 0; d < o.rank; ++d) {
        // Where the shape is refused the start is not looked at.
        if (!s.start)
            o.start[d] =
                s.job == KesTaskCorrelation && o.x.shape[d] >= 1 ? o.firstPlace(d) : 0;
        if (!s.dec) o.dec[d] = 1;
    }
}

bool isTaken(const Array& array, int rank) {
    return std::all_of(array.shape, array.shape + rank,
                       [](int n) { return n >= 1 && n < INT_MAX; });
}

size_t roomOf(const Array& array, int rank) {
    return isTaken(array, rank) ? array.room(rank) : 1;
}

template <class T> std::vector<T> numbers(size_t n, std::minstd_rand& random) {
    std::vector<T> values(n);
    for (T& value : values) value = T(int(random() % 129) - 64) / 64;
    return values;
}

template <class T>
std::shared_ptr<void> fixedOperand(const Array& array, int rank,
                                   std::minstd_rand& random) {
    auto values =
        std::make_shared<std::vector<T>>(numbers<T>(roomOf(array, rank), random));
    return {values, values->data()};
}

void makeDense(Array& array, int rank) {
    uint32_t next = 1;
    for (int d = 0; d < rank; ++d) {
        array.stride[d] = static_cast<int>(next);
        next *= static_cast<uint32_t>(array.shape[d]);
    }
}

/// Any strides of a shape that is taken, dense ones of another.
void chooseAnyStrides(Array& array, int rank, bool zeros, std::minstd_rand& random) {
    if (isTaken(array, rank))
        qorkes::test::chooseStrides(array, rank, zeros, random);
    else
        makeDense(array, rank);
}

void renew(Subject& s, Choices& choices) {
    drop(s);
    auto random = newRandom(choices);
    const int rank = static_cast<int>(choices.below(KesTaskMaxRank + 1));
    const int longest[] = {6, 30, 30, 400};
    if (rank > 0)
        s.shapes =
            qorkes::test::chooseOperation(rank, longest[choices.below(4)], random);
    Operation& o = s.shapes;
    s.job = o.rank > 0 ? o.job : 1;
    if (s.job == KesTaskCorrelation && choices.below(4) == 0) s.job = 3;
    s.wordA = static_cast<int>(choices.below(100));
    s.wordB = static_cast<int>(choices.below(100));
    s.mode = static_cast<int>(choices.below(4));
    s.dataType = s.internalType = static_cast<int>(choices.below(3));
    spoilShapes(o, choices);
    const bool fixed = choices.below(2) == 1;
    s.xstride = fixed && choices.below(2) == 1;
    if (fixed && !s.xstride) makeDense(o.x, rank);
    if (fixed && choices.below(8) != 0)
        s.x = s.floats() ? fixedOperand<float>(o.x, rank, random)
                         : fixedOperand<double>(o.x, rank, random);
    const int status =
        fixed ? __kesNewTaskX(&s.task, s.job, s.wordA, s.mode, s.wordB, s.dataType,
                              rank, o.x.shape, o.y.shape, o.z.shape, s.x.get(),
                              s.xstride ? o.x.stride : nullptr)
              : __kesNewTask(&s.task, s.job, s.wordA, s.mode, s.wordB, s.dataType, rank,
                             o.x.shape, o.y.shape, o.z.shape);
    require(status == KesStatusOk && s.task, "a new task");
    setDefaults(s);
}

/// A start or a decimation for each dimension, not always of the full result.
void chooseWords(const Subject& s, bool start, int* words, Choices& choices) {
    for (int d = 0; d < s.shapes.rank; ++d) {
        const int odd[] = {0, -1, INT_MAX, INT_MIN};
        if (choices.below(12) == 0)
            words[d] = odd[choices.below(4)];
        else if (!start)
            words[d] = 1 + static_cast<int>(choices.below(4));
        else
            words[d] = static_cast<int>(choices.below(12)) +
                       (s.job == 1 ? 0 : 1 - std::clamp(s.shapes.x.shape[d], 1, 400));
    }
}

void edit(Subject& s, Choices& choices) {
    int words[KesTaskMaxRank] = {};
    const int editable[] = {KesTaskParamMode, KesTaskParamEditWord, KesTaskParamStart,
                            KesTaskParamDecimation, KesTaskParamInternalType};
    const int parameter = choices.below(4) != 0
                              ? editable[choices.below(5)]
                              : static_cast<int>(choices.below(23)) - 1;
    const bool null = choices.below(16) == 0;
    const bool isStart = parameter == KesTaskParamStart;
    const bool isDec = parameter == KesTaskParamDecimation;
    if (isStart || isDec)
        chooseWords(s, isStart, words, choices);
    else
        words[0] = static_cast<int>(choices.below(4));

    const int status = __kesEditTask(s.task, parameter, null ? nullptr : words);
    if (s.status != KesStatusOk)
        return require(status == s.status, "the first failure");
    s.committed = 0;
    if (null) {
        s.status = KesStatusNullPointer;
    } else if (isStart || isDec) {
        (isStart ? s.start : s.dec) = true;
        std::copy_n(words, s.shapes.rank, isStart ? s.shapes.start : s.shapes.dec);
    } else if (parameter == KesTaskParamMode) {
        s.mode = words[0];
    } else if (parameter == KesTaskParamEditWord) {
        s.editWord = words[0];
    } else if (parameter == KesTaskParamInternalType) {
        s.internalType = words[0];
    } else {
        s.status = parameter < 1 || parameter > 19 ? KesStatusCcBadParameter
                                                   : KesStatusCcFixedParameter;
    }
    require(status == s.status, "the status of an edit");
}

void copy(const Subject& from, Subject& to) {
    if (&from == &to) return;
    drop(to);
    int expected = from.status;
    if (expected == KesStatusOk && from.privateData && from.clone != working)
        expected = KesStatusCcCopyFailed;
    TaskRecord* task = nullptr;
    require(__kesCopyTask(&task, from.task) == expected, "the status of a copy");
    require((task != nullptr) == (expected == KesStatusOk), "a copy or none");
    if (!task) return;
    to = from;
    to.task = task;
}

void givePrivateData(Subject& s, Choices& choices) {
    if (!s.privateData) s.task->privateData = std::malloc(1);
    s.privateData = true;
    s.clone = static_cast<Hook>(choices.below(3));
    s.release = static_cast<Hook>(choices.below(3));
    const KesTaskClone clones[] = {nullptr, cloneData, failToClone};
    const KesTaskRelease releases[] = {nullptr, releaseData, failToRelease};
    s.task->privateClone = clones[s.clone];
    s.task->privateRelease = releases[s.release];
}

void commit(Subject& s) {
    require(__kesCommitTask(s.task) == s.status, "the status of a commit");
    if (s.status == KesStatusOk) s.committed = 1;
}

void setStatus(Subject& s, Choices& choices) {
    const int status = choices.below(3) == 0 ? -1 : KesStatusOk;
    require(__kesccSetStatus(s.task, status) == s.status, "the status before");
    s.status = status;
}

// ---- Executions ---------------------------------------------------------------------

struct Nulls {
    bool x, y, z;
};

int statusOfDimension(const Operation& o, int d) {
    const int64_t last = int64_t{o.x.shape[d]} + o.y.shape[d] - 2;
    const int64_t place = int64_t{o.start[d]} - (o.job == 1 ? 0 : 1 - o.x.shape[d]);
    if (o.z.stride[d] == 0) return KesStatusCcBadZStride;
    if (place < 0 || place > last) return KesStatusCcBadStart;
    if (o.dec[d] < 1) return KesStatusCcBadDecimation;
    const int64_t end = place + (int64_t{o.z.shape[d]} - 1) * o.dec[d];
    return end > last ? KesStatusCcBadDecimation : KesStatusOk;
}

int statusOfLine(const Operation& o, Nulls nulls) {
    if (nulls.x) return KesStatusCcNullX;
    if (o.x.shape[0] < 1) return KesStatusCcBadXShape;
    if (nulls.y) return KesStatusCcNullY;
    if (o.y.shape[0] < 1) return KesStatusCcBadYShape;
    if (nulls.z) return KesStatusCcNullZ;
    if (o.z.shape[0] < 1) return KesStatusCcBadZShape;
    return statusOfDimension(o, 0);
}

int statusOfGrid(const Operation& o, Nulls nulls) {
    if (nulls.x) return KesStatusCcNullX;
    if (nulls.y) return KesStatusCcNullY;
    if (nulls.z) return KesStatusCcNullZ;
    for (int d = 0; d < o.rank; ++d) {
        if (o.x.shape[d] < 1) return KesStatusCcBadXShape;
        if (o.y.shape[d] < 1) return KesStatusCcBadYShape;
        if (o.z.shape[d] < 1) return KesStatusCcBadZShape;
        const int status = statusOfDimension(o, d);
        if (status != KesStatusOk) return status;
    }
    return KesStatusOk;
}

int expectedStatus(const Subject& s, const Operation& o, Nulls nulls) {
    if (s.status != KesStatusOk) return s.status;
    if (o.rank == 1)
        return !s.floats() && s.single() ? KesStatusCcNotImplemented
                                         : statusOfLine(o, nulls);
    if (s.mode == KesTaskModeFft) return KesStatusCcNotImplemented;
    return statusOfGrid(o, nulls);
}

/// The Euclidean norm of an array's elements, each as often as strides repeat it.
template <class T> double norm(const Array& array, int rank, const T* values) {
    const int low[KesTaskMaxRank] = {};
    double squares = 0;
    qorkes::test::forEachIndex(0, rank, low, array.shape, [&](const int* index) {
        const double value = values[array.offset(rank, index)];
        squares += value * value;
    });
    return std::sqrt(squares);
}

/// How far from the sum an output may be. The norm of a transform's error grows with
/// log2 of its length, and that of a product of spectra is at most |x| |y|.
template <class T>
double bound(const Subject& s, const Operation& o, const T* x, const T* y) {
    if (o.rank != 1 || s.mode == KesTaskModeDirect) return 0;
    const double epsilon = !s.floats() ? 0x1p-52 : s.single() ? 0x1p-23 : 0x1p-24;
    const int length = o.x.shape[0] + o.y.shape[0];
    return 2 * std::log2(length + 1.0) * epsilon * norm(o.x, 1, x) * norm(o.y, 1, y);
}

template <class T>
void expectSums(const Subject& s, const Operation& o, const T* x, const T* y,
                std::vector<T>& z, T untouched) {
    const int low[KesTaskMaxRank] = {};
    const double error = bound(s, o, x, y);
    qorkes::test::forEachIndex(0, o.rank, low, o.z.shape, [&](const int* q) {
        T& place = z[static_cast<size_t>(o.z.offset(o.rank, q))];
        const auto sum = static_cast<double>(
            qorkes::test::output<qorkes::test::Extended>(o, x, y, q));
        require(std::fabs(place - sum) <= error, "a sum of products");
        place = untouched;
    });
}

template <class T> void execute(Subject& s, Choices& choices) {
    auto random = newRandom(choices);
    Operation o = s.shapes;
    o.job = s.job == KesTaskConvolution ? KesTaskConvolution : KesTaskCorrelation;
    const bool fixed = choices.below(2) == 1 && (s.x || choices.below(8) == 0);
    const unsigned dense = choices.below(8); // which arrays, a bit each
    const Array own = o.x;
    chooseAnyStrides(o.x, o.rank, true, random);
    chooseAnyStrides(o.y, o.rank, true, random);
    chooseAnyStrides(o.z, o.rank, false, random);
    if (dense & 1) makeDense(o.x, o.rank);
    if (dense & 2) makeDense(o.y, o.rank);
    if (dense & 4) makeDense(o.z, o.rank);
    if (fixed && s.xstride) o.x = own;
    if (fixed && !s.xstride) makeDense(o.x, o.rank);
    if (!(dense & 4) && o.rank > 0 && choices.below(10) == 0)
        o.z.stride[choices.below(static_cast<unsigned>(o.rank))] = 0;
    const unsigned null = choices.below(20);
    const Nulls nulls = {fixed ? !s.x : null == 0, null == 1, null == 2};
    const int expected = expectedStatus(s, o, nulls);

    const T untouched = 77;
    const bool runs = expected == KesStatusOk;
    const auto x = numbers<T>(roomOf(o.x, o.rank), random);
    const auto y = numbers<T>(roomOf(o.y, o.rank), random);
    std::vector<T> z(runs ? roomOf(o.z, o.rank) : 1, untouched);
    const T* px = fixed     ? static_cast<const T*>(s.x.get())
                  : nulls.x ? nullptr
                            : x.data();
    const T* py = nulls.y ? nullptr : y.data();
    T* pz = nulls.z ? nullptr : z.data();
    const int* ystride = dense & 2 ? nullptr : o.y.stride;
    const int* zstride = dense & 4 ? nullptr : o.z.stride;
    const int status = fixed ? __kesExecX(s.task, py, ystride, pz, zstride)
                             : __kesExec(s.task, px, dense & 1 ? nullptr : o.x.stride,
                                         py, ystride, pz, zstride);
    require(status == expected, "the status of an execution");
    if (s.status == KesStatusOk) s.committed = 1;
    s.status = status;
    if (runs && o.rank > 0) expectSums<T>(s, o, px, py, z, untouched);
    require(z == std::vector<T>(z.size(), untouched), "no write beside the outputs");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    Choices choices(Bytes(data, size));
    std::array<Subject, 2> subjects;
    for (Subject& s : subjects) renew(s, choices);
    for (int calls = 0; calls < 20 && choices.areLeft(); ++calls) {
        Subject& s = subjects[choices.below(2)];
        Subject& other = subjects[choices.below(2)];
        if (!s.task) renew(s, choices);
        switch (choices.below(10)) {
        case 0:
            renew(s, choices);
            break;
        case 1:
        case 2:
            edit(s, choices);
            break;
        case 3:
            copy(s, other);
            break;
        case 4:
            givePrivateData(s, choices);
            break;
        case 5:
            commit(s);
            break;
        case 6:
            setStatus(s, choices);
            break;
        default:
            s.floats() ? execute<float>(s, choices) : execute<double>(s, choices);
        }
        for (const Subject& each : subjects)
            if (each.task) inspect(each);
    }
    for (Subject& s : subjects) drop(s);
    return 0;
}
