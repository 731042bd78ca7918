// Abstract streams: what the caller's function is asked, what its answers do, and how
// numbers of the buffer become numbers of the draw.
#include "stream.hpp"

#include <common/ext.hpp>
#include <support/stack.hpp>

#include <algorithm>
#include <limits>

using namespace qorkes;
using namespace qorkes::test;

namespace {

constexpr int size = 8;
uint32_t buffer[size];

struct Call {
    int nmin, nmax, idx;
    bool operator==(const Call&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Call& call) {
    return out << '{' << call.nmin << ", " << call.nmax << ", " << call.idx << '}';
}

/// The caller's side: numbers counted up from 0, as many a call as is scripted.
struct Script {
    std::vector<int> answers; // the last one is repeated
    std::vector<Call> calls;
    uint32_t next = 0;
} script;

int update(StreamState*, int* n, uint32_t* to, int* nmin, int* nmax, int* idx) {
    EXPECT_EQ(*n, size);
    EXPECT_EQ(to, buffer);
    const std::size_t turn = std::min(script.calls.size(), script.answers.size() - 1);
    const int answer = script.answers[turn];
    script.calls.push_back({*nmin, *nmax, *idx});
    for (int i = 0; i < std::min(answer, size); ++i)
        to[(*idx + i) % size] = script.next++;
    return answer;
}

struct Counts {
    int32_t size, index, free;
    bool operator==(const Counts&) const = default;
};
Counts countsOf(const Stream& stream) {
    return *reinterpret_cast<const Counts*>(stream.get() + 1);
}

Stream scripted(std::vector<int> answers) {
    script = {std::move(answers), {}, 0};
    StreamState* stream = nullptr;
    EXPECT_EQ(__kesiNewAbstractStream(&stream, size, buffer, update), KesStatusOk);
    return Stream(stream);
}

TEST(AbstractStream, ConstructorsRefuseAndAllocateNothing) {
    StreamState dummy;
    StreamState* stream = &dummy;
    double d[1];
    float s[1];
    const auto integers = [&](int n, uint32_t* to) {
        return __kesiNewAbstractStream(&stream, n, to, update);
    };
    const auto doubles = [&](int n, double* to, double low, double high) {
        return __kesdNewAbstractStream(
            &stream, n, to, low, high,
            [](StreamState*, int*, double*, int*, int*, int*) { return 0; });
    };
    const auto singles = [&](int n, float* to, float low, float high) {
        return __kessNewAbstractStream(
            &stream, n, to, low, high,
            [](StreamState*, int*, float*, int*, int*, int*) { return 0; });
    };
    for (const int refused :
         {integers(0, buffer), integers(size, nullptr), doubles(0, d, 0, 1),
          doubles(1, nullptr, 0, 1), doubles(1, d, 1, 1), doubles(1, d, 1, 0.5),
          singles(1, nullptr, 0, 1), singles(1, s, 1, 1), singles(1, s, 1, 0.5),
          __kesiNewAbstractStream(&stream, size, buffer, nullptr),
          __kessNewAbstractStream(&stream, 1, s, 0, 1, nullptr)})
        EXPECT_EQ(refused, -3);
    EXPECT_EQ(stream, &dummy);

    EXPECT_EQ(doubles(1, d, std::numeric_limits<double>::quiet_NaN(), 1), KesStatusOk);
    __kesDeleteStream(&stream);
    EXPECT_EQ(singles(1, s, 0, std::numeric_limits<float>::quiet_NaN()), KesStatusOk);
    __kesDeleteStream(&stream);
    EXPECT_EQ(integers(-5, buffer), KesStatusOk);
    __kesDeleteStream(&stream);
}

TEST(AbstractStream, UpdateIsAskedForWhatIsOwed) {
    const struct {
        std::vector<int> answers, draws;
        std::vector<Call> calls;
        Counts after;
    } rows[] = {
        // All at once: seven more draws without a call.
        {{8}, {1}, {{1, 8, 0}}, {8, 1, 1}},
        {{8}, {1, 1, 1, 1, 1, 1, 1, 1}, {{1, 8, 0}}, {8, 0, 8}},
        {{8}, {1, 7, 1}, {{1, 8, 0}, {1, 8, 0}}, {8, 1, 1}},
        // More than the buffer holds; the second call goes on where the first stopped.
        {{5, 8}, {10}, {{8, 8, 0}, {5, 8, 5}}, {8, 2, 5}},
        {{8}, {10}, {{8, 8, 0}, {2, 8, 0}}, {8, 2, 2}},
        {{8}, {24}, {{8, 8, 0}, {8, 8, 0}, {8, 8, 0}}, {8, 0, 8}},
        // Less than is owed, again and again, round the end.
        {{3}, {7}, {{7, 8, 0}, {4, 8, 3}, {1, 8, 6}}, {8, 7, 6}},
        {{3}, {7, 4}, {{7, 8, 0}, {4, 8, 3}, {1, 8, 6}, {2, 8, 1}}, {8, 3, 7}},
        // What is unread is delivered first, round the end too.
        {{6, 8}, {4, 5, 7}, {{4, 8, 0}, {3, 8, 6}, {2, 8, 6}}, {8, 0, 2}},
        {{8}, {0, -1}, {}, {8, 0, 8}},
    };
    for (const auto& row : rows) {
        const Stream stream = scripted(row.answers);
        uint32_t expected = 0;
        for (const int n : row.draws) {
            Words r(static_cast<std::size_t>(std::max(n, 0)));
            ASSERT_EQ(draw(stream, n, r.data()), KesStatusOk);
            for (const uint32_t x : r) EXPECT_EQ(x, expected++);
        }
        EXPECT_EQ(script.calls, row.calls);
        EXPECT_EQ(countsOf(stream), row.after)
            << countsOf(stream).index << ' ' << countsOf(stream).free;
    }
}

#ifndef __SANITIZE_ADDRESS__
/// The address of the frame that Update is called with, as the number that it delivers.
[[gnu::noinline]] int deliverFrame(StreamState*, int*, uint32_t* to, int*, int*,
                                   int* idx) {
    to[*idx] =
        static_cast<uint32_t>(reinterpret_cast<uintptr_t>(__builtin_frame_address(0)));
    return 1;
}

void drawOne(StreamState* stream, uint32_t* r) { _kesiRngUniformBits(0, stream, 1, r); }

/// Update finds the boundary that compilers rely on now, whoever asks for numbers.
TEST(AbstractStream, UpdateStackIsAligned) {
    StreamState* stream = nullptr;
    ASSERT_EQ(__kesiNewAbstractStream(&stream, size, buffer, deliverFrame), 0);
    const Stream owner(stream);
    for (const uintptr_t offset : {0u, 4u, 8u, 12u}) {
        uint32_t frame = 0;
        callOffBoundary(offset, drawOne, stream, &frame);
        EXPECT_EQ((frame + 2 * sizeof(void*)) % 16, 0u) << offset;
    }
}
#endif

TEST(AbstractStream, FailedDrawsLeaveTheStreamAsItWas) {
    const struct {
        int answer, status;
    } rows[] = {{9, KesStatusBadUpdate}, {-1, KesStatusBadUpdate}, {0, -1121}};
    for (const auto& [answer, status] : rows) {
        // Three stay unread, of which the failing draw delivers all, and three more.
        const Stream stream = scripted({5, 3, answer});
        EXPECT_EQ(take<uint32_t>(stream, 2), (Words{0, 1}));
        const Counts before = countsOf(stream);
        uint32_t r[9] = {};
        EXPECT_EQ(draw(stream, 9, r), status);
        for (uint32_t i = 0; i < 6; ++i) EXPECT_EQ(r[i], i + 2);
        EXPECT_EQ(countsOf(stream), before);
        EXPECT_EQ(script.calls.back(), (Call{3, 8, 0}));

        // What was unread comes once more, unless new numbers have replaced it.
        std::fill(buffer, buffer + size, 77);
        buffer[2] = 2;
        EXPECT_EQ(take<uint32_t>(stream, 1)[0], 2u);
        EXPECT_EQ(countsOf(stream).free, before.free + 1);
    }
}

TEST(AbstractStream, UpdateChangesTheArithmeticOfItsDraw) {
    script.calls.clear();
    const auto meddling = [](StreamState*, int*, uint32_t* to, int* nmin, int* nmax,
                             int* idx) {
        script.calls.push_back({*nmin, *nmax, *idx});
        std::fill(to, to + size, script.calls.size());
        *nmax = 4;
        *idx = 6;
        return 3;
    };
    StreamState* stream = nullptr;
    ASSERT_EQ(__kesiNewAbstractStream(&stream, size, buffer, meddling), KesStatusOk);
    const Stream owner(stream);
    EXPECT_EQ(take<uint32_t>(owner, 5), (Words{1, 1, 1, 2, 2}));
    EXPECT_EQ(script.calls, (std::vector<Call>{{5, 8, 0}, {2, 4, 1}}));
    EXPECT_EQ(countsOf(owner), (Counts{8, 5, 3}));
}

TEST(AbstractStream, MoreNumbersThanTheBufferHasGoRoundIt) {
    const auto boasting = [](StreamState*, int*, uint32_t* to, int*, int* nmax, int*) {
        for (uint32_t i = 0; i < size; ++i) to[i] = i;
        return *nmax = 20;
    };
    StreamState* stream = nullptr;
    ASSERT_EQ(__kesiNewAbstractStream(&stream, size, buffer, boasting), KesStatusOk);
    EXPECT_EQ(take<uint32_t>(Stream(stream), 20),
              (Words{0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3}));
}

TEST(AbstractStream, OverlappingDrawGoesElementByElement) {
    const Stream stream = scripted({8});
    EXPECT_EQ(draw(stream, 5, buffer + 1), KesStatusOk);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(buffer[i], 0u);
    EXPECT_EQ(buffer[6], 6u);
}

TEST(AbstractStream, CopiesShareTheBufferAndNothingJumps) {
    const Stream stream = scripted({8});
    take<uint32_t>(stream, 3);
    const Stream copy = copyOf(stream);
    EXPECT_EQ(take<uint32_t>(copy, 5), take<uint32_t>(stream, 5));
    EXPECT_EQ(__kesLeapfrogStream(copy.get(), 0, 2), KesStatusLeapfrogUnsupported);
    EXPECT_EQ(__kesSkipAheadStream(copy.get(), 2), KesStatusSkipAheadUnsupported);
    EXPECT_EQ(__kesCopyStreamState(copy.get(), stream.get()), KesBrngiAbstract);
}

/// A buffer of reals that are all there from the start, and a stream of them.
template <class T> struct Reals {
    static inline std::vector<T> all;
    static int update(StreamState*, int*, T*, int*, int* nmax, int*) { return *nmax; }

    static Stream stream(const std::vector<T>& values, T low, T high) {
        all = values;
        StreamState* made = nullptr;
        const int n = static_cast<int>(all.size());
        int status;
        if constexpr (std::is_same_v<T, double>)
            status = __kesdNewAbstractStream(&made, n, all.data(), low, high, update);
        else
            status = __kessNewAbstractStream(&made, n, all.data(), low, high, update);
        EXPECT_EQ(status, KesStatusOk);
        return Stream(made);
    }
};

// Doubles: extended throughout and rounded at the end. Floats: each operation rounded,
// by way of memory.
double mapped(double v, double low, double high, double a, double b) {
    return round64((ext{v} - low) * ((ext{b} - a) / (ext{high} - low)) + a);
}
float mapped(float v, float low, float high, float a, float b) {
    volatile float range = b - a, own = high - low, scale = range / own;
    volatile float distance = v - low, product = distance * scale, result = product + a;
    return result;
}

template <class T> void checkMapping() {
    std::vector<T> values;
    for (int i = 0; i < 300; ++i) values.push_back(static_cast<T>(i * 3.3e-3 - 0.2));
    for (const Range<T>& own : {Range<T>{0, 1}, {T(-0.3f), T(0.9f)}, {-3, 7}})
        for (const Range<T>& range :
             {Range<T>{10, 20}, {T(-0.1f), T(1e-3f)}, {5, -2}}) {
            const Stream stream = Reals<T>::stream(values, own.a, own.b);
            for (std::size_t i = 0; const T r : take<T>(stream, 300, range))
                ASSERT_EQ(r, mapped(values[i++], own.a, own.b, range.a, range.b));
        }
}

TEST(AbstractStream, RealsAreMappedToTheRangeOfTheDraw) {
    checkMapping<double>();
    checkMapping<float>();
    EXPECT_EQ(take<double>(Reals<double>::stream({0.5}, 0, 1), 1, {10, 20})[0], 15);
}

TEST(AbstractStream, OnlyTheOwnKindIsDelivered) {
    uint32_t word = 7;
    float s = 7;
    double d = 7;
    const Stream integers = scripted({8}), doubles = Reals<double>::stream({1}, 0, 1),
                 singles = Reals<float>::stream({1}, 0, 1);
    for (const int status :
         {draw(integers, 1, &d), draw(integers, 1, &s), draw(doubles, 1, &word),
          draw(doubles, 1, &s), draw(singles, 1, &word), draw(singles, 1, &d)})
        EXPECT_EQ(status, KesStatusBadAbstractKind);
    EXPECT_TRUE(word == 7 && s == 7 && d == 7);
    EXPECT_TRUE(script.calls.empty());
}

} // namespace
