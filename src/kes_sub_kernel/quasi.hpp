// Quasi-random sequences over GF(2): the state of both, their delivery, the choice of
// one component and the skip. Component d of member i is the exclusive or of the
// direction numbers of d that the bits of i's Gray code select, so that neighbours
// differ by one of them: Antonov and Saleev, "An economic method of computing
// LP-tau-sequences", USSR Computational Mathematics and Mathematical Physics 19, 1979.
#pragma once

#include <common/bits.hpp>
#include <kes_sub_kernel/lanes.hpp>
#include <kes_sub_kernel/stream_record.hpp>

#include <algorithm>

namespace qorkes {

constexpr int bitsOfComponent = 32;
constexpr uint32_t allComponents = 0xFFFFFFFF;
constexpr int32_t selectsComponent = 0x7FFFFFFF; // in place of the stride of a leapfrog

template <int dimensions_> struct QuasiState {
    static constexpr int dimensions = dimensions_;

    uint32_t Counter; // index of the present point, from 1 on
    int32_t Dimension;
    uint32_t LeapDim;  // the one component that is delivered, or allComponents
    int32_t Remaining; // components of the present point still to be delivered
    uint32_t Point[dimensions];
    uint32_t Direction[dimensions][bitsOfComponent + 1]; // the last is never written
};

/// The number of dimensions that seed words ask for.
template <class State>
QORKES_INLINE int32_t dimensionOf(int n, const uint32_t* params) {
    if (n < 1) return 1;
    const auto dimension = static_cast<int32_t>(params[0]);
    return dimension > State::dimensions ? 1 : dimension;
}

/// Member 1 of the sequence: the origin, member 0, is never delivered.
template <class State> QORKES_INLINE void start(State& state) {
    for (int d = 0; d < state.Dimension; ++d) state.Point[d] = state.Direction[d][0];
    state.Counter = 1;
    state.Remaining = 0;
    state.LeapDim = allComponents;
}

// ---- From member to member ----------------------------------------------------------

/// Which direction number leads from member `counter` to the next: that of the lowest
/// zero bit, or the one that is never written where the sequence is at its end.
QORKES_INLINE int stepFrom(uint32_t counter) {
    return ~counter == 0 ? bitsOfComponent : lowestBit(~counter);
}

/// Those that make up a member.
QORKES_INLINE uint32_t grayCode(uint32_t counter) { return counter ^ counter >> 1; }

QORKES_INLINE uint32_t sumOf(const uint32_t* direction, uint32_t selected) {
    uint32_t sum = 0;
    for (; selected != 0; selected &= selected - 1)
        sum ^= direction[lowestBit(selected)];
    return sum;
}

template <class State> QORKES_INLINE void stepPoint(State& state) {
    const int step = stepFrom(state.Counter++);
    for (int d = 0; d < state.Dimension; ++d)
        state.Point[d] ^= state.Direction[d][step];
}

// ---- Delivery -----------------------------------------------------------------------

template <class State>
QORKES_INLINE void deliverComponent(State& state, int n, uint32_t* r) {
    const uint32_t* direction = state.Direction[state.LeapDim];
    uint32_t component = state.Point[state.LeapDim];
    for (int i = 0; i < n; ++i) {
        r[i] = component;
        component ^= direction[stepFrom(state.Counter++)];
    }
    state.Point[state.LeapDim] = component;
}

template <class State>
QORKES_INLINE uint32_t* deliverOneByOne(State& state, int count, uint32_t* r) {
    for (; count > 0; --count) {
        r = std::copy_n(state.Point, state.Dimension, r);
        stepPoint(state);
    }
    return r;
}

/// `count` times four points, of which the first has an index that 4 divides: the steps
/// between them are always 0, 1, 0, and then a higher one. Components go four at a
/// time, the last ones of a point with up to three words more than it has, so the
/// others of the following point are stored later. What direction numbers are used
/// again and again is gathered beforehand: those of one step stand far apart in the
/// state.
template <class State>
QORKES_INLINE uint32_t* deliverFours(State& state, int count, uint32_t* r) {
    constexpr int width = (State::dimensions + 3) / 4 * 4;
    constexpr int least = 2, often = 5; // steps from one four to the next
    constexpr int point = 0, first = 1, second = 2, both = 3, further = 4; // rows
    alignas(16) uint32_t rows[further + often + 1][width];
    const int dimension = state.Dimension, lastFour = (dimension - 1) & ~3;
    for (auto& row : rows) std::fill_n(row + lastFour, 4, 0);
    const auto gather = [&](int step, uint32_t* steps) {
        for (int d = 0; d < dimension; ++d)
            steps[d] = state.Direction[d][1] ^ state.Direction[d][step];
    };
    for (int d = 0; d < dimension; ++d) {
        rows[point][d] = state.Point[d];
        rows[first][d] = state.Direction[d][0];
        rows[second][d] = state.Direction[d][1];
        rows[both][d] = rows[first][d] ^ rows[second][d];
    }
    for (int i = 0; i < often; ++i) gather(least + i, rows[further + i]);
    for (; count > 0; --count, r += 4 * dimension) {
        const int step = stepFrom(state.Counter + 3);
        state.Counter += 4;
        const int place = std::min(step - least, often);
        if (place == often) gather(step, rows[further + often]);
        const uint32_t* next = rows[further + place];
        for (int d = lastFour; d >= 0; d -= 4) {
            const __m128 four = loadFour(rows[point] + d);
            storeFour(r + d, four);
            storeFour(r + dimension + d, _mm_xor_ps(four, loadFour(rows[first] + d)));
            storeFour(r + 2 * dimension + d,
                      _mm_xor_ps(four, loadFour(rows[both] + d)));
            storeFour(r + 3 * dimension + d,
                      _mm_xor_ps(four, loadFour(rows[second] + d)));
            storeFour(rows[point] + d, _mm_xor_ps(four, loadFour(next + d)));
        }
    }
    std::copy_n(rows[point], dimension, state.Point);
    return r;
}

template <class State>
QORKES_INLINE void deliverWholePoints(State& state, int count, uint32_t* r) {
    constexpr int many = 16;
    if (count >= many) {
        const int last = state.Dimension < 3 ? 3 : 1; // points of three words and more
        const int begun = static_cast<int>((0 - state.Counter) % 4);
        const int fours = (count - begun - last) / 4;
        r = deliverOneByOne(state, begun, r);
        r = deliverFours(state, fours, r);
        count -= begun + 4 * fours;
    }
    deliverOneByOne(state, count, r);
}

template <class State>
QORKES_INLINE void deliverPoints(State& state, int n, uint32_t* r) {
    const int dimension = state.Dimension;
    const uint32_t* rest = state.Point + (dimension - state.Remaining);
    if (state.Remaining > n) {
        std::copy_n(rest, n, r);
        state.Remaining -= n;
        return;
    }
    if (state.Remaining > 0) {
        r = std::copy_n(rest, state.Remaining, r);
        n -= state.Remaining;
        state.Remaining = 0;
        stepPoint(state);
        if (n < 1) return;
    }
    const int points = n / dimension, begun = n % dimension;
    deliverWholePoints(state, points, r);
    if (begun > 0) {
        std::copy_n(state.Point, begun, r + points * dimension);
        state.Remaining = dimension - begun;
    }
}

/// The integer slots: points one after the other, or one component of each.
template <class State>
QORKES_INLINE int deliverQuasi(StreamState* stream, int n, uint32_t* r) {
    auto& state = stateOf<State>(stream);
    if (n < 1) return KesStatusOk;
    if (state.LeapDim == allComponents)
        deliverPoints(state, n, r);
    else
        deliverComponent(state, n, r);
    return KesStatusOk;
}

// ---- Jumps --------------------------------------------------------------------------

/// Component k alone from now on. Where all were delivered before, it goes on at its
/// first undelivered number; another one's place is one point behind.
template <class State> QORKES_INLINE void selectComponent(State& state, uint32_t k) {
    if (state.LeapDim == k) return;
    const uint32_t* direction = state.Direction[k];
    if (state.LeapDim != allComponents) {
        ++state.Counter;
        state.Point[k] = sumOf(direction, grayCode(state.Counter));
    } else if (state.Remaining != 0 &&
               static_cast<int32_t>(k) < state.Dimension - state.Remaining) {
        state.Point[k] ^= direction[stepFrom(state.Counter++)];
    }
    state.Remaining = 0;
    state.LeapDim = k;
}

/// The method `leapfrog` does not interleave here: it selects.
template <class State>
QORKES_INLINE int leapfrogQuasi(StreamState* stream, int32_t stride, int32_t k) {
    auto& state = stateOf<State>(stream);
    const auto component = static_cast<uint32_t>(k);
    if (stride != selectsComponent ||
        component >= static_cast<uint32_t>(state.Dimension))
        return KesStatusLeapfrogUnsupported;
    selectComponent(state, component);
    return KesStatusOk;
}

/// Passes over n numbers of all components. From inside a point `pointsMore` is added
/// to the whole points in what is left behind that point.
template <class State>
QORKES_INLINE void skipNumbers(State& state, int32_t n, int32_t pointsMore) {
    if (state.Remaining > n) {
        state.Remaining -= n;
        return;
    }
    const int32_t dimension = state.Dimension, behind = n - state.Remaining;
    const int32_t begun = behind % dimension;
    int32_t points = behind / dimension;
    if (state.Remaining > 0) points += pointsMore;
    state.Remaining = begun == 0 ? 0 : dimension - begun;
    if (points < 1) return;

    const uint32_t counter = state.Counter + static_cast<uint32_t>(points);
    const uint32_t steps = grayCode(state.Counter) ^ grayCode(counter);
    for (int d = 0; d < dimension; ++d)
        state.Point[d] ^= sumOf(state.Direction[d], steps);
    state.Counter = counter;
}

template <class State, int32_t pointsMore>
QORKES_INLINE int skipAheadQuasi(StreamState* stream, int32_t n) {
    if (n < 1) return KesStatusSkipAheadUnsupported;
    skipNumbers(stateOf<State>(stream), n, pointsMore);
    return KesStatusOk;
}

} // namespace qorkes
