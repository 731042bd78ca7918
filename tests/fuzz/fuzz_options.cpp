// What the command line says of a draw, a convolution or a correlation, one value a
// line. Whatever the text, there is a result, or one message.
#include "fuzz.hpp"

#include <drawing.hpp>
#include <failure.hpp>
#include <tasks.hpp>
#include <text.hpp>

#include <CLI/CLI.hpp>

#include <new>
#include <stdexcept>

using namespace qorkes;
using namespace qorkes::fuzz;

// Shapes may ask for much: memory is short while options are looked at, so that saying
// so is tried as well and what does fit is quick.
static size_t longestBlock = SIZE_MAX;

void* operator new(size_t size) {
    void* memory = size > longestBlock ? nullptr : std::malloc(size);
    if (!memory) throw std::bad_alloc();
    return memory;
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }

namespace {

using Lines = std::vector<std::string>;

struct ShortMemory {
    ShortMemory() { longestBlock = 32768; }
    ~ShortMemory() { longestBlock = SIZE_MAX; }
};

/// Distribution, count, method, precision, and parameters from there on. Nothing is
/// drawn: what is known by then to be right is all that is looked at.
void draw(Lines lines) {
    struct Opened {};
    lines.resize(std::max<size_t>(lines.size(), 4));
    Drawing drawing;
    drawing.distribution = lines[0];
    drawing.count = lines[1];
    drawing.method = lines[2];
    drawing.precision = lines[3];
    drawing.parameters.assign(lines.begin() + 4, lines.end());
    try {
        writeDrawn(drawing, []() -> StreamState* { throw Opened(); });
    } catch (const Opened&) {
    }
}

/// The options in their order, left out where the line is empty.
void compute(int job, const Lines& lines) {
    static const char* const options[] = {"--shape-a",    "--stride-a", "--shape-b",
                                          "--stride-b",   "--start",    "--count",
                                          "--decimation", "--mode",     "--precision"};
    static const std::string few = "1 2 3 4", more = "1 2 3 4 5 6 7 8 9 10 11 12";
    static const MemoryFile a(
        Bytes(reinterpret_cast<const uint8_t*>(few.data()), few.size()));
    static const MemoryFile b(
        Bytes(reinterpret_cast<const uint8_t*>(more.data()), more.size()));
    CLI::App command;
    addTaskOptions(command, job);
    Lines arguments = {b.path(), a.path()}; // from the last to the first
    for (size_t i = 0; i < std::min(lines.size(), std::size(options)); ++i)
        if (!lines[i].empty()) arguments.push_back(options[i] + ('=' + lines[i]));
    try {
        command.parse(arguments);
    } catch (const CLI::ParseError&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    require(std::freopen("/dev/null", "w", stdout), "a place for results");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const ShortMemory guard;
    try {
        const Lines lines = split(text, '\n');
        if (data[0] % 3 == 0)
            draw(lines);
        else
            compute(data[0] % 3, lines);
    } catch (const Failure& failure) {
        require(failure.message.find('\n') == std::string::npos, "a message of a line");
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    return 0;
}
