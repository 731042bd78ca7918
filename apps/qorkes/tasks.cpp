#include "tasks.hpp"

#include "arguments.hpp"
#include "failure.hpp"
#include "input.hpp"
#include "output.hpp"
#include "text.hpp"

#include <qorkes/kes.h>

#include <CLI/CLI.hpp>

#include <climits>
#include <cstdlib>
#include <memory>
#include <new>

namespace qorkes {
namespace {

using Entries = std::vector<int>; // one for each dimension

/// An array on the command line; `letter` ends the names of its options.
struct Operand {
    const char* letter;
    Source source;
    std::string shape, stride;

    std::string option(const char* name) const {
        return std::string("--") + name + "-" + letter;
    }
};

struct Options {
    int job;
    Operand a{"a", {}, {}, {}}, b{"b", {}, {}, {}};
    std::string start, decimation, count;
    std::string mode = "auto", precision = "double";
    bool binary = false;
};

Entries entriesOf(const std::string& option, const std::string& text, int low) {
    Entries entries;
    for (const std::string& entry : split(text, ','))
        entries.push_back(static_cast<int>(wholeNumber(option, entry, low, INT_MAX)));
    return entries;
}

void expectRank(const std::string& option, const Entries& entries, size_t rank) {
    if (entries.size() != rank)
        fail(option + ": has " + std::to_string(entries.size()) + " numbers; " +
             std::to_string(rank) + " are needed, one for each dimension");
}

/// The entries of an option that may be missing.
template <class Default>
Entries entriesOr(const std::string& option, const std::string& text, int low,
                  size_t rank, Default byDefault) {
    Entries entries;
    if (text.empty())
        for (size_t d = 0; d < rank; ++d) entries.push_back(byDefault(d));
    else
        entries = entriesOf(option, text, low);
    expectRank(option, entries, rank);
    return entries;
}

template <class T> struct Array {
    std::vector<T> values; // dense, the first dimension fastest
    Entries shape;
};

/// The shape that is given, or one dimension with all that the stride reaches.
Entries shapeOf(const Operand& operand, size_t count, const Entries& stride) {
    if (!operand.shape.empty()) {
        const Entries shape = entriesOf(operand.option("shape"), operand.shape, 1);
        if (shape.size() > KesTaskMaxRank)
            fail(operand.option("shape") + ": has " + std::to_string(shape.size()) +
                 " dimensions; there can be " + std::to_string(KesTaskMaxRank));
        return shape;
    }
    if (stride.empty()) return {static_cast<int>(count)};
    if (stride.size() != 1 || stride[0] == 0)
        fail(operand.option("shape") + ": is needed with " + operand.option("stride") +
             " " + operand.stride);
    return {static_cast<int>((count - 1) / std::abs(int64_t{stride[0]}) + 1)};
}

/// How many elements an array of this shape has, if they fit into memory.
size_t countOf(const Entries& shape) {
    double count = 1;
    for (const int n : shape) count *= n;
    if (count > double{mostNumbers}) throw std::bad_alloc();
    return static_cast<size_t>(count);
}

/// Walks an array by its strides; element zero of a negative one lies at the far end.
template <class T>
std::vector<T> gathered(const std::vector<T>& numbers, const Entries& shape,
                        const Entries& stride, size_t count) {
    size_t at = 0;
    for (size_t d = 0; d < shape.size(); ++d)
        if (stride[d] < 0) at -= size_t(shape[d] - 1) * size_t(stride[d]);
    std::vector<T> dense;
    Entries index(shape.size());
    while (dense.size() < count) {
        dense.push_back(numbers[at]);
        for (size_t d = 0; d < shape.size(); ++d) {
            at += size_t(stride[d]);
            if (++index[d] < shape[d]) break;
            at -= size_t(stride[d]) * size_t(shape[d]);
            index[d] = 0;
        }
    }
    return dense;
}

template <class T> Array<T> arrayOf(const Operand& operand) {
    auto numbers = readNumbers<T>(operand.source).values;
    Entries stride;
    if (!operand.stride.empty())
        stride = entriesOf(operand.option("stride"), operand.stride, -INT_MAX);
    const Entries shape = shapeOf(operand, numbers.size(), stride);
    if (!stride.empty()) expectRank(operand.option("stride"), stride, shape.size());

    double count = 1, last = 0;
    for (size_t d = 0; d < shape.size(); ++d) {
        count *= shape[d];
        if (!stride.empty()) last += (shape[d] - 1.0) * std::abs(double(stride[d]));
    }
    const double needed = stride.empty() ? count : last + 1;
    const auto given = static_cast<double>(numbers.size());
    if (stride.empty() ? needed != given : needed > given)
        fail(nameOf(operand.source) + " holds " + std::to_string(numbers.size()) +
             " numbers; " + operand.option("shape") +
             (stride.empty() ? "" : " and " + operand.option("stride")) + " take " +
             shortest(needed));
    // Strides of 0 can repeat what is given more often than there is room for.
    if (!stride.empty()) numbers = gathered(numbers, shape, stride, countOf(shape));
    return {std::move(numbers), shape};
}

/// Which places of the full result are computed.
struct Part {
    Entries start, decimation, count;
};

Part partOf(const Options& options, const Entries& a, const Entries& b) {
    const size_t rank = a.size();
    const auto first = [&](size_t d) {
        return options.job == KesTaskConvolution ? 0 : 1 - a[d];
    };
    const auto last = [&](size_t d) { return int64_t{first(d)} + a[d] + b[d] - 2; };
    Part part;
    part.start = entriesOr("--start", options.start, -INT_MAX, rank, first);
    for (size_t d = 0; d < rank; ++d)
        if (part.start[d] < first(d) || part.start[d] > last(d))
            fail("--start: " + std::to_string(part.start[d]) +
                 " lies outside the full result, which goes from " +
                 std::to_string(first(d)) + " to " + std::to_string(last(d)));
    part.decimation = entriesOr("--decimation", options.decimation, 1, rank,
                                [](size_t) { return 1; });
    const auto left = [&](size_t d) {
        return static_cast<int>((last(d) - part.start[d]) / part.decimation[d] + 1);
    };
    part.count = entriesOr("--count", options.count, 1, rank, left);
    for (size_t d = 0; d < rank; ++d)
        if (part.count[d] > left(d))
            fail("--count: " + std::to_string(part.count[d]) + " is more than the " +
                 std::to_string(left(d)) + " results that there are from the start on");
    return part;
}

int modeOf(const std::string& name, size_t rank) {
    if (name == "auto") return KesTaskModeAuto;
    if (name == "direct") return KesTaskModeDirect;
    if (name != "fft") failChoice("--mode", name, {"auto", "direct", "fft"});
    if (rank > 1) fail("--mode: fft is for one dimension; take auto or direct");
    return KesTaskModeFft;
}

template <class T>
std::vector<T> executed(const Options& options, const Array<T>& a, const Array<T>& b,
                        const Part& part) {
    std::vector<T> result(countOf(part.count));
    const auto rank = static_cast<int>(a.shape.size());
    TaskRecord* task = nullptr;
    int status =
        __kesNewTask(&task, options.job, 0, modeOf(options.mode, a.shape.size()), 0,
                     sizeof(T) == 4 ? KesTaskSingle : KesTaskDouble, rank,
                     a.shape.data(), b.shape.data(), part.count.data());
    if (status == KesStatusOk) {
        __kesEditTask(task, KesTaskParamStart, part.start.data());
        __kesEditTask(task, KesTaskParamDecimation, part.decimation.data());
        status = __kesExec(task, a.values.data(), nullptr, b.values.data(), nullptr,
                           result.data(), nullptr);
        __kesDeleteTask(&task);
    }
    if (status != KesStatusOk)
        fail(nameOf(options.a.source) + " and " + nameOf(options.b.source) +
                 ": not enough memory",
             statusOfOutputTrouble);
    return result;
}

template <class T> void run(const Options& options) {
    const Array<T> a = arrayOf<T>(options.a), b = arrayOf<T>(options.b);
    if (a.shape.size() != b.shape.size())
        fail("--shape-b: has " + std::to_string(b.shape.size()) +
             " dimensions; as many as A has are needed, " +
             std::to_string(a.shape.size()));
    const Part part = partOf(options, a.shape, b.shape);
    const auto result = executed(options, a, b, part);
    writeNumbers(result, a.shape.size() > 1 ? part.count[0] : 1, options.binary);
}

void addOperand(CLI::App& command, Operand& operand, const char* name) {
    command
        .add_option(name, operand.source.path,
                    std::string("array ") + name + "; - is standard input")
        ->required()
        ->type_name("");
    const auto add = [&](const char* option, std::string& value, const char* help,
                         const char* type) {
        command.add_option(operand.option(option), value, help)->type_name(type);
    };
    add("column", operand.source.column, "the column to read", "NAME|N");
    add("shape", operand.shape,
        "its dimensions, up to seven, the one that varies\n"
        "fastest first; default: one, with all numbers",
        "N,...");
    add("stride", operand.stride,
        "steps between neighbours of each dimension;\n"
        "negative ones go backwards, 0 repeats",
        "N,...");
}

} // namespace

void addTaskOptions(CLI::App& command, int job) {
    auto options = std::make_shared<Options>();
    options->job = job;
    addOperand(command, options->a, "A");
    addOperand(command, options->b, "B");
    command
        .add_option("--start", options->start,
                    "the first place that is computed; default: the\n"
                    "first of the full result")
        ->type_name("N,...");
    command
        .add_option("--decimation", options->decimation,
                    "compute every N-th place; default: 1")
        ->type_name("N,...");
    command
        .add_option("--count", options->count,
                    "how many places to compute; default: all that\n"
                    "are left")
        ->type_name("N,...");
    command
        .add_option("--mode", options->mode,
                    "auto: one dimension by FFT where that is faster,\n"
                    "more by sums")
        ->type_name("auto|direct|fft");
    addPrecision(command, options->precision);
    addBinary(command, options->binary);
    command.callback([options] {
        if (isSingle(options->precision))
            run<float>(*options);
        else
            run<double>(*options);
    });
}

} // namespace qorkes
