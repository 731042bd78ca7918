// Comparison by bits, which tells zeros apart and knows NaNs.
#pragma once

#include <common/bits.hpp>

#include <gtest/gtest.h>

namespace qorkes::test {

template <class T>
testing::AssertionResult sameBits(const T* expected, const T* actual, int n) {
    for (int i = 0; i < n; ++i)
        if (bitsOf(expected[i]) != bitsOf(actual[i]))
            return testing::AssertionFailure()
                   << "element " << i << std::hex << ": 0x" << bitsOf(actual[i])
                   << ", expected 0x" << bitsOf(expected[i]);
    return testing::AssertionSuccess();
}

} // namespace qorkes::test
