// WH: four multiplicative generators x -> a x mod m side by side, with prime moduli
// just below 2^24. The state, and the real numbers of all four together.
#pragma once

#include <common/bits.hpp>
#include <common/ext.hpp>
#include <kes_sub_kernel/reals.hpp>
#include <kes_sub_kernel/stream_record.hpp>

#include <algorithm>

namespace qorkes {

constexpr int componentsOfWh = 4;

struct WhState {
    uint32_t Value[componentsOfWh]; // the next numbers to be delivered
    uint32_t Multiplier[componentsOfWh];
};
static_assert(sizeof(StreamState) + sizeof(WhState) == 48);

/// Where the member's components stand in the tables. The state does not tell it.
QORKES_INLINE int tablePlaceOf(const StreamState* stream) {
    int row, member;
    __kesGetBrngBaseOffset(stream->BrngId, &row, &member);
    return componentsOfWh * member;
}

/// The integer part of a number that is not negative and below 2^32, from its bits.
QORKES_INLINE int32_t integerPart(const double& x) {
    constexpr uint32_t one = 0x3FF00000, exponentBits = 20;
    const uint32_t high = highWord(x);
    if (high < one) return 0;
    const uint32_t mantissa = high << (31 - exponentBits) | signBit;
    return static_cast<int32_t>(mantissa >> (31 - ((high - one) >> exponentBits)));
}

/// The fraction of the sum of s / m, by the words as numbers. Its integer part is that
/// of the sum rounded to double, so that the fraction may be a hair below 0.
template <class AsNumber>
QORKES_INLINE ext fractionOf(const uint32_t* s, const double* reciprocals,
                             AsNumber&& asNumber) {
    ext sum = asNumber(s[3]) * ext{reciprocals[3]};
    for (int j = 2; j >= 0; --j) sum += asNumber(s[j]) * ext{reciprocals[j]};
    const double rounded = round64(sum);
    return sum - integerPart(rounded);
}

/// Numbers of the range. Words that a copy or a file brought in may be any: the first
/// ones are taken as unsigned, and a step reduces them.
template <class Real>
QORKES_INLINE int drawWh(StreamState* stream, int n, Real* r, Real a, Real b) {
    constexpr int most = 128;
    uint32_t words[most * componentsOfWh];
    const double* reciprocals = _kesdWH_IM_Tab + tablePlaceOf(stream);
    const ext width = round64(ext{b} - a), shift = a;
    const auto deliver = [&](Real& y, const uint32_t* s, auto asNumber) {
        store(y, fractionOf(s, reciprocals, asNumber) * width + shift);
    };
    if (n < 1) return KesStatusOk;
    __kesiBRngWH(stream, 1, words);
    deliver(*r, words, [](const uint32_t& word) { return wordAsNumber(word); });
    for (++r, --n; n > 0;) {
        const int count = std::min(n, most);
        __kesiBRngWH(stream, count, words);
        for (int i = 0; i < count; ++i)
            deliver(r[i], words + componentsOfWh * i, [](const uint32_t& word) {
                return static_cast<ext>(static_cast<int32_t>(word));
            });
        r += count;
        n -= count;
    }
    return KesStatusOk;
}

} // namespace qorkes
