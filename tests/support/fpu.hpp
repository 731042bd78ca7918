// A caller's floating-point settings: runs code under chosen control words and tells
// what it left behind.
//
//     for (const Fpu& setting : fpuSettings())
//         EXPECT_TRUE(leavesFpuAlone(setting, [&] { _qordInv_HA(n, a, y); }));
//
// The callable runs between two changes of the control words, so it should be one call
// of the library and nothing else.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace qorkes::test {

struct Fpu {
    uint16_t controlWord;
    uint32_t mxcsr;
};

/// What every program starts with: all exceptions masked, extended, to nearest.
constexpr Fpu defaultFpu = {0x037F, 0x1F80};

/// All settings of x87 precision and rounding, each with all settings of rounding and
/// flush-to-zero in MXCSR. Exceptions stay masked.
inline const std::vector<Fpu>& fpuSettings() {
    static const std::vector<Fpu> settings = [] {
        std::vector<Fpu> all;
        for (const uint32_t precision : {0x300, 0x200, 0x000})
            for (uint32_t rounding = 0; rounding <= 0xC00; rounding += 0x400)
                for (uint32_t vector = 0; vector <= 0xE000; vector += 0x2000)
                    all.push_back({static_cast<uint16_t>(0x7F | precision | rounding),
                                   0x1F80 | vector});
        return all;
    }();
    return settings;
}

/// The state of both units after a call. Status words show the exceptions it raised.
struct FpuAfter {
    Fpu words;
    uint16_t tagWord; // 0xFFFF: the register stack is empty
    uint16_t statusWord;
};

/// Exception flags, in the x87 status word and in MXCSR alike.
enum FpuFlag : unsigned {
    invalidFlag = 0x01,
    denormalFlag = 0x02,
    divideByZeroFlag = 0x04,
    overflowFlag = 0x08,
    underflowFlag = 0x10,
    inexactFlag = 0x20,
    allFpuFlags = 0x3F
};

/// Runs `call` under `setting` with no exception flag raised, and puts the default
/// words back.
template <class Call>
[[gnu::noinline]] FpuAfter runUnder(const Fpu& setting, Call&& call) {
    asm volatile("fninit\n\tfldcw %0\n\tldmxcsr %1"
                 :
                 : "m"(setting.controlWord), "m"(setting.mxcsr)
                 : "memory");
    call();
    uint16_t environment[14];
    FpuAfter after;
    asm volatile("fnstenv %0\n\tstmxcsr %1\n\tfninit\n\tldmxcsr %2"
                 : "=m"(environment), "=m"(after.words.mxcsr)
                 : "m"(defaultFpu.mxcsr)
                 : "memory");
    after.words.controlWord = environment[0];
    after.statusWord = environment[2];
    after.tagWord = environment[4];
    return after;
}

/// Exceptions that `call` raises in either unit.
template <class Call> unsigned flagsRaised(Call&& call) {
    const FpuAfter after = runUnder(defaultFpu, call);
    return (after.statusWord | after.words.mxcsr) & allFpuFlags;
}

/// Whether `call` leaves the control words of its caller and an empty register stack.
template <class Call>
testing::AssertionResult leavesFpuAlone(const Fpu& setting, Call&& call) {
    const FpuAfter after = runUnder(setting, call);
    if (after.words.controlWord == setting.controlWord && after.tagWord == 0xFFFF &&
        ((after.words.mxcsr ^ setting.mxcsr) & ~uint32_t{allFpuFlags}) == 0)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << std::hex << "control word " << setting.controlWord << " became "
           << after.words.controlWord << ", MXCSR " << setting.mxcsr << " became "
           << after.words.mxcsr << ", tag word " << after.tagWord;
}

} // namespace qorkes::test
