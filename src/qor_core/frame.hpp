// The frame of every vector kernel: the control words on the way in and out, the loop
// over groups of elements, and the way from a bad element to its report.
//
// A kernel file ends with entries of this form, where `loop` is a QORKES_NOINLINE
// function that holds all the arithmetic:
//
//     void _qordInv_HA(int n, const double* a, double* y) {
//         inFrame<Precision::bits64, Mxcsr::callers, invert>(n, a, y);
//     }
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>
#include <qorkes/qor.h>

#include <type_traits>
#include <xmmintrin.h>

namespace qorkes {

/// What a kernel forces into the x87 control word. Precision and rounding are replaced
/// together, so a forced precision always comes with round to nearest.
enum class Precision : uint16_t { callers = 0, bits53 = 0x200, bits64 = 0x300 };

/// Whether a kernel clears flush-to-zero and the rounding control of MXCSR.
enum class Mxcsr { callers, cleared };

constexpr uint32_t x87PrecisionAndRounding = 0xF00;
constexpr uint32_t mxcsrFlushAndRounding = 0xE000;

/// The caller's control words, and which of them have to be put back.
struct Frame {
    uint16_t controlWord;
    uint32_t mxcsr;
    bool controlWordChanged;
    bool mxcsrChanged;
};

template <Precision precision, Mxcsr mxcsr> QORKES_INLINE Frame enterFrame() {
    Frame frame{};
    if constexpr (precision != Precision::callers) {
        const auto wanted = static_cast<uint32_t>(precision);
        frame.controlWord = controlWord();
        if ((frame.controlWord & x87PrecisionAndRounding) != wanted) {
            setControlWord(static_cast<uint16_t>(
                (frame.controlWord & ~x87PrecisionAndRounding) | wanted));
            frame.controlWordChanged = true;
        }
    }
    if constexpr (mxcsr == Mxcsr::cleared) {
        frame.mxcsr = _mm_getcsr();
        if (frame.mxcsr & mxcsrFlushAndRounding) {
            _mm_setcsr(frame.mxcsr & ~mxcsrFlushAndRounding);
            frame.mxcsrChanged = true;
        }
    }
    return frame;
}

QORKES_INLINE void leaveFrame(const Frame& frame) {
    if (frame.controlWordChanged) setControlWord(frame.controlWord);
    if (frame.mxcsrChanged) _mm_setcsr(frame.mxcsr);
}

/// Runs `loop` under the kernel's control words. `loop` must not be inlined: its call
/// is what keeps the compiler from moving arithmetic out of the frame.
template <Precision precision, Mxcsr mxcsr, auto loop, class... Args>
QORKES_INLINE void inFrame(Args... args) {
    const Frame frame = enterFrame<precision, mxcsr>();
    loop(args...);
    leaveFrame(frame);
}

/// `group(i)` for each whole group of `size` elements, then `one(i)` for each element
/// of the rest, in order. Nothing runs for n of 0 and below.
template <int size, class Group, class One>
QORKES_INLINE void inGroups(int n, Group&& group, One&& one) {
    int i = 0;
    for (; n - i >= size; i += size) group(i);
    for (; i < n; ++i) one(i);
}

/// Elements at a time in kernels that go over a block in passes. Passes keep the chains
/// of dependent operations short; long ones fill the processor's queue.
constexpr int blockSize = 128;

/// `ordinary(i)` does whole groups of `size` elements from i on before the first
/// special one, or some of them, and returns how many elements these are; `special(i)`
/// does each element of a special group and `rest(i)` those at the end that make up no
/// group.
template <int size, class Ordinary, class Special, class Rest>
QORKES_INLINE void inRuns(int n, Ordinary&& ordinary, Special&& special, Rest&& rest) {
    int i = 0;
    while (n - i >= size) {
        const int done = ordinary(i);
        i += done;
        if (done != 0) continue;
        for (int k = 0; k < size; ++k) special(i + k);
        i += size;
    }
    for (; i < n; ++i) rest(i);
}
template <int size, class Ordinary, class One>
QORKES_INLINE void inRuns(int n, Ordinary&& ordinary, One&& one) {
    inRuns<size>(n, ordinary, one, one);
}

/// The first pass over a block: `take(i)` for each whole group of `size` elements
/// before the first one that is not `isOrdinary(i)`, up to a block of them; returns how
/// many elements these are.
template <int size, class IsOrdinary, class Take>
QORKES_INLINE int takeOrdinary(int n, IsOrdinary&& isOrdinary, Take&& take) {
    const int last = (n < blockSize ? n : blockSize) - size;
    int i = 0;
    for (; i <= last; i += size) {
        if (!isOrdinary(i)) [[unlikely]]
            break;
        take(i);
    }
    return i;
}

/// A hint that the line `bytes` ahead of `p` is read once, soon.
QORKES_INLINE void prefetchAhead(const void* p, int bytes) {
    _mm_prefetch(static_cast<const char*>(p) + bytes, _MM_HINT_NTA);
}

/// Reports element `index`, whose provisional result is stored already, under `name`.
/// A handler may change control words; the kernel's come back. Exception flags that it
/// raises in the x87 unit stay raised.
template <class T>
QORKES_COLD void report(int status, int index, const T* a, const T* b, T* y, T* z,
                        const char* name) {
    const uint16_t keptControlWord = controlWord();
    const uint32_t keptMxcsr = _mm_getcsr();
    if constexpr (std::is_same_v<T, double>)
        _qordError(status, index, a, b, y, z, name);
    else
        _qorsError(status, index, a, b, y, z, name);
    setControlWord(keptControlWord);
    _mm_setcsr(keptMxcsr);
}

/// The same for kernels whose report saves and restores the whole x87 unit: exception
/// flags that a handler raises there do not survive it.
template <class T>
QORKES_COLD void reportBesideUnit(int status, int index, const T* a, T* y,
                                  const char* name) {
    UnitState unit;
    saveUnit(unit);
    setControlWord(static_cast<uint16_t>(unit.word[0]));
    report(status, index, a, a, y, y, name);
    restoreUnit(unit);
}

/// The two bindings of `report` to a kernel's name. A kernel file defines
///
///     constexpr char _QOR_THISFUNC_NAME[] = "_qordInv_HA";
///     constexpr auto _ErrorGate = errorGate<double, _QOR_THISFUNC_NAME>;
template <class T, const char* name>
QORKES_COLD void errorCall(int status, int index, const T* a, const T* b, T* y, T* z) {
    report(status, index, a, b, y, z, name);
}

/// One input and one output: each stands for its missing partner too.
template <class T, const char* name>
QORKES_COLD void errorGate(int status, int index, const T* a, T* y) {
    errorCall<T, name>(status, index, a, a, y, y);
}

} // namespace qorkes
