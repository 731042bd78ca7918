// A generator that says what is asked of it: it delivers the numbers of a list, keeps
// the counts of its draws, and fails at the draw that a test chooses.
#pragma once

#include <kes_sub_kernel/stream.hpp>

#include <cstring>

namespace qorkes::test {

/// What the generator below does; one for all streams, so that copies share it.
struct Script {
    std::vector<double> numbers; // in [0, 1), delivered in turn, over and over
    std::size_t next = 0;
    std::vector<int> counts; // of the draws so far
    int failAt = -1;         // index of the draw that returns `status`
    int status = -77;        // below 0 nothing is delivered
};
inline Script script;

namespace scripted {

inline int initialise(int, StreamState*, int, const uint32_t*) { return KesStatusOk; }

template <class T> int deliver(StreamState*, int n, T* r, T a, T b) {
    const bool isChosen = static_cast<int>(script.counts.size()) == script.failAt;
    const int status = isChosen ? script.status : KesStatusOk;
    script.counts.push_back(n);
    if (status < 0) return status;
    for (int i = 0; i < n; ++i) {
        const double u = script.numbers[script.next++ % script.numbers.size()];
        r[i] = static_cast<T>(a + (b - a) * static_cast<T>(u));
    }
    return status;
}

inline int deliverWords(StreamState*, int n, uint32_t* r) {
    std::memset(r, 0, static_cast<std::size_t>(n) * sizeof *r);
    return KesStatusOk;
}

inline int identifier() {
    static const BrngProperties row = {.StateSize = sizeof(StreamState) + 4,
                                       .SeedCount = 1,
                                       .HasZero = 1,
                                       .WordSize = 4,
                                       .BitCount = 32,
                                       .InitStream = initialise,
                                       .sBRng = deliver<float>,
                                       .dBRng = deliver<double>,
                                       .iBRng = deliverWords};
    static const int brng = __kesRegisterBrng(&row);
    return brng;
}

} // namespace scripted

/// A stream of these numbers, with a script that starts anew.
inline Stream scriptedStream(std::vector<double> numbers) {
    script = Script{};
    script.numbers = std::move(numbers);
    return newStream(scripted::identifier(), {1});
}

} // namespace qorkes::test
