// What fuzzing programs share: bytes as a file, choices from bytes, and the end of a
// run when something does not hold.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace qorkes::fuzz {

using Bytes = std::span<const uint8_t>;

/// Ends the program, and with it the run, if `holds` is false.
inline void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

/// A file in memory, with a name that others can open.
class MemoryFile {
public:
    explicit MemoryFile(Bytes bytes = {}) : descriptor(memfd_create("fuzz", 0)) {
        require(descriptor >= 0, "a file in memory");
        const auto written = write(descriptor, bytes.data(), bytes.size());
        require(written == static_cast<ssize_t>(bytes.size()), "a written file");
    }
    MemoryFile(const MemoryFile&) = delete;
    ~MemoryFile() { close(descriptor); }
    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor); }

private:
    int descriptor;
};

/// Choices made by the bytes of the input, 0 when they are used up.
class Choices {
public:
    explicit Choices(Bytes input) : bytes(input) {}
    bool areLeft() const { return !bytes.empty(); }
    unsigned below(unsigned end) { return next() % end; }

private:
    Bytes bytes;
    unsigned next() {
        unsigned value = 0;
        for (int i = 0; i < 2 && !bytes.empty(); ++i) {
            value = value << 8 | bytes[0];
            bytes = bytes.subspan(1);
        }
        return value;
    }
};

} // namespace qorkes::fuzz
