// Calls from programs that keep their stack aligned to 4 bytes only: 32-bit ones may.
#pragma once

#include <cstdint>
#include <cstring>

namespace qorkes::test {

/// f(args...) with the stack `offset` bytes (a multiple of 4) off a 16-byte boundary.
template <class... Args>
[[gnu::noinline]] void callOffBoundary(uintptr_t offset, void (*f)(Args...),
                                       Args... args) {
#ifdef __i386__
    alignas(16) static char stack[1 << 16];
    char* const bottom = stack + sizeof stack - 128 + offset;
    char* end = bottom;
    (..., (std::memcpy(end, &args, sizeof args), end += sizeof args));
    asm volatile("movl %%esp, %%esi\n\t"
                 "movl %1, %%esp\n\t"
                 "call *%0\n\t"
                 "movl %%esi, %%esp"
                 :
                 : "r"(f), "r"(bottom)
                 : "eax", "ecx", "edx", "esi", "cc", "memory", "st", "st(1)", "st(2)",
                   "st(3)", "st(4)", "st(5)", "st(6)", "st(7)");
#else
    static_cast<void>(offset);
    f(args...);
#endif
}

} // namespace qorkes::test
