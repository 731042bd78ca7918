// zubsMalloc_8u, zubsMalloc_32f, zubsMalloc_64f, zubsFree: arrays on 32-byte
// boundaries.
//
// The word directly before an array holds what malloc gave.
#include <common/abi.hpp>
#include <qorkes/zubs.h>

#include <cstdlib>
#include <cstring>

using namespace qorkes;

namespace {

constexpr size_t alignment = 32;

/// Room to move up to the boundary and, below it, for one pointer.
constexpr size_t slack = alignment - 1 + sizeof(void*);
static_assert(slack >= 35);

void* aligned(int64_t len, size_t elementSize) {
    if (len < 1) return nullptr;
    const uint64_t bytes = static_cast<uint64_t>(len) * elementSize + slack + 1;
    if (bytes > PTRDIFF_MAX) return nullptr;
    void* raw = std::malloc(static_cast<size_t>(bytes));
    if (!raw) return nullptr;
    const uintptr_t address =
        (reinterpret_cast<uintptr_t>(raw) + slack) & ~(alignment - 1);
    char* p = static_cast<char*>(raw) + (address - reinterpret_cast<uintptr_t>(raw));
    std::memcpy(p - sizeof raw, &raw, sizeof raw);
    return p;
}

} // namespace

void* zubsMalloc_8u(int len) { return aligned(len, 1); }
float* zubsMalloc_32f(int len) {
    return static_cast<float*>(aligned(len, sizeof(float)));
}
double* zubsMalloc_64f(int len) {
    return static_cast<double*>(aligned(len, sizeof(double)));
}

void zubsFree(void* p) {
    if (!p) return;
    void* raw;
    std::memcpy(&raw, static_cast<char*>(p) - sizeof raw, sizeof raw);
    std::free(raw);
}
