// Sobol and Niederreiter: direction numbers against recomputations from the published
// constructions, selection and skips.
#include "stream.hpp"

#include <algorithm>
#include <cstring>
#include <set>

using namespace qorkes;
using namespace qorkes::test;

namespace {

struct Sequence {
    const char* name;
    int brng, most;
    int skippedMore; // points that a skip from inside a point adds
};
constexpr Sequence sequences[] = {{"Sobol", KesBrngSobol, 40, 1},
                                  {"Niederreiter", KesBrngNiederr, 318, -1}};

Stream points(int brng, int dimensions) {
    return newStream(brng, {static_cast<uint32_t>(dimensions)});
}

/// Component d of member i of a sequence that starts so, from the columns of d.
uint32_t component(const Words& columns, uint32_t i) {
    uint32_t sum = 0;
    for (uint32_t bit = 0; bit < 32; ++bit)
        if ((i ^ i / 2) >> bit & 1) sum ^= columns[bit];
    return sum;
}

void expectMembers(int brng, const std::vector<Words>& columns) {
    const int dimensions = static_cast<int>(columns.size());
    const Stream stream = points(brng, dimensions);
    const auto expect = [&](uint32_t first, uint32_t count) {
        for (uint32_t i = first; i < first + count; ++i) {
            const Words point = take<uint32_t>(stream, dimensions);
            for (std::size_t d = 0; d < columns.size(); ++d)
                ASSERT_EQ(point[d], component(columns[d], i))
                    << "dimension " << d << " of member " << i;
        }
    };
    expect(1, 600);
    // The numbers of the higher bits, by long skips over whole points.
    uint32_t member = 601;
    for (const uint32_t target : {0xFFFFFu, 0x3000000u, 0xFFFFFF0u, 0xABCDEF00u}) {
        while (member < target) {
            const auto most = 0x7FFFFFFFu / static_cast<uint32_t>(dimensions);
            const uint32_t count = std::min(target - member, most);
            ASSERT_EQ(__kesSkipAheadStream(stream.get(),
                                           static_cast<int>(count) * dimensions),
                      KesStatusOk);
            member += count;
        }
        expect(member, 40);
        member += 40;
    }
}

/// m[j] from the d before it: the form in which the recurrence was published.
TEST(Sobol, AllDimensionsFollowThePublishedRecurrence) {
    const Words last = {3, 7, 11, 13, 19, 25, 37, 59};
    std::vector<Words> columns = {Words(32, 1)};
    for (std::size_t i = 1; i < 40; ++i) {
        const auto degree = static_cast<std::size_t>(iSobolIrredPolyDeg[i - 1]);
        const uint32_t polynomial = uSobolIrredPoly[i - 1];
        ASSERT_EQ(polynomial >> degree, 1u);
        const uint32_t* starts = i < 39 ? uSobolMInit[i] : last.data();
        Words m(starts, starts + degree);
        for (std::size_t j = 0; j < degree && i < 39; ++j) {
            EXPECT_EQ(m[j] % 2, 1u) << i;
            EXPECT_LT(m[j], 2u << j) << i;
        }
        while (m.size() < 32) {
            const std::size_t j = m.size();
            m.push_back(m[j - degree]);
            for (std::size_t k = 1; k <= degree; ++k)
                m[j] ^= (polynomial >> (degree - k) & 1) * (m[j - k] << k);
        }
        columns.push_back(m);
    }
    for (Words& m : columns)
        for (std::size_t j = 0; j < 32; ++j) m[j] <<= 31 - j;
    expectMembers(KesBrngSobol, columns);
}

/// Row 39 of the start numbers, for those that read it there: also in programs that the
/// linker gives a copy of each table.
TEST(Sobol, PolynomialsStandBehindTheStartNumbers) {
    const auto row = reinterpret_cast<uintptr_t>(uSobolMInit) + sizeof uSobolMInit;
    EXPECT_EQ(std::memcmp(reinterpret_cast<const void*>(row), uSobolIrredPoly,
                          sizeof uSobolIrredPoly),
              0);
}

/// The order of t modulo the polynomial is 2^degree - 1.
TEST(Sobol, PolynomialsArePrimitiveAndDiffer) {
    std::set<uint32_t> different;
    for (int i = 0; i < 39; ++i) {
        const uint32_t polynomial = uSobolIrredPoly[i];
        const uint32_t top = 1u << iSobolIrredPolyDeg[i];
        different.insert(polynomial);
        uint32_t power = 1, order = 0;
        do {
            power <<= 1;
            if (power & top) power ^= polynomial;
            ++order;
        } while (power > 1);
        EXPECT_EQ(order, top - 1) << polynomial;
    }
    EXPECT_EQ(different.size(), 39u);
}

/// What is left when all products are struck out.
TEST(Niederreiter, PolynomialsAreTheFirstIrreducibleOnes) {
    constexpr uint32_t size = 3048;
    std::vector<bool> reducible(size);
    for (uint32_t a = 2; a < size; ++a)
        for (uint32_t b = 2; b < size; ++b) {
            uint32_t product = 0;
            for (int bit = 0; bit < 12; ++bit) product ^= (b >> bit & 1) * (a << bit);
            if (product < size) reducible[product] = true;
        }
    std::size_t found = 0;
    for (uint32_t polynomial = 2; polynomial < size; ++polynomial) {
        if (reducible[polynomial]) continue;
        ASSERT_LT(found, 318u);
        EXPECT_EQ(uNiederrIrredPoly[found], polynomial);
        EXPECT_EQ(polynomial >> iNiederrIrredPolyDeg[found], 1u);
        ++found;
    }
    EXPECT_EQ(found, 318u);
}

/// The matrix of a polynomial p of degree e: rows q e to q e + e - 1 are the expansion
/// of g / p^(q + 1) in powers of 1 / t, from successive terms on. The numerator g is
/// that whose expansion begins with q e zeros and e ones.
std::vector<Words> expansionRows(uint32_t p, int e) {
    std::vector<Words> rows;
    for (uint64_t power = 1; rows.size() < 32;) {
        uint64_t next = 0;
        for (int bit = 0; bit <= e; ++bit) next ^= (p >> bit & 1) * (power << bit);
        power = next;
        const int degree = static_cast<int>(rows.size()) + e;
        uint64_t g = 0;
        for (int ones = 0; ones < e; ++ones) g ^= power >> (degree - ones);
        uint64_t rest = g;
        Words terms;
        for (int t = 0; t < 32 + e; ++t) {
            rest <<= 1;
            terms.push_back(rest >> degree & 1);
            if (terms.back()) rest ^= power;
        }
        for (int u = 0; u < e && rows.size() < 32; ++u)
            rows.emplace_back(terms.begin() + u, terms.begin() + u + 32);
    }
    return rows;
}

TEST(Niederreiter, AllDimensionsFollowTheConstruction) {
    std::vector<Words> columns;
    for (int i = 0; i < 318; ++i) {
        const auto rows = expansionRows(uNiederrIrredPoly[i], iNiederrIrredPolyDeg[i]);
        Words column(32);
        for (std::size_t j = 0; j < 32; ++j)
            for (std::size_t row = 0; row < 32; ++row)
                column[j] |= rows[row][j] << (31 - row);
        columns.push_back(column);
    }
    expectMembers(KesBrngNiederr, columns);
}

class EverySequence : public testing::TestWithParam<Sequence> {
protected:
    const Sequence& sequence = GetParam();
    Stream fresh(int dimensions) const { return points(sequence.brng, dimensions); }

    /// Component k of point number p of a fresh stream, both from 0 on.
    uint32_t at(int dimensions, int p, int k) const {
        const Words all = take<uint32_t>(fresh(dimensions), (p + 1) * dimensions);
        return all[static_cast<std::size_t>(p * dimensions + k)];
    }
};

uint32_t next(const Stream& stream) { return take<uint32_t>(stream, 1)[0]; }

int select(const Stream& stream, int k) {
    return __kesLeapfrogStream(stream.get(), k, 0x7FFFFFFF);
}

TEST_P(EverySequence, TakesDimensionsInTheirRange) {
    EXPECT_EQ(take<uint32_t>(fresh(2), 4),
              (Words{0x80000000, 0x80000000, 0xC0000000, 0x40000000}));
    const Words one = take<uint32_t>(newStream(sequence.brng, {}), 9);
    EXPECT_EQ(take<uint32_t>(fresh(1), 9), one);
    EXPECT_EQ(take<uint32_t>(fresh(sequence.most + 1), 9), one);
    EXPECT_NE(take<uint32_t>(fresh(sequence.most), 9), one);
    const Stream negative = newStream(sequence.brng, {0xFFFFFFFE});
    EXPECT_EQ(static_cast<int32_t>(stateOf(negative)[1]), -2);
}

TEST_P(EverySequence, SelectsADimensionFromAnyPlace) {
    for (int before = 0; before < 7; ++before)
        for (int k = 0; k < 3; ++k) {
            const Stream stream = fresh(3);
            take<uint32_t>(stream, before);
            ASSERT_EQ(select(stream, k), KesStatusOk);
            int point = before / 3 + (k < before % 3);
            EXPECT_EQ(next(stream), at(3, point++, k)) << before << ' ' << k;
            EXPECT_EQ(next(stream), at(3, point++, k));
            // The same one again changes nothing; another one is a point behind.
            ASSERT_EQ(select(stream, k), KesStatusOk);
            EXPECT_EQ(next(stream), at(3, point++, k));
            const int other = (k + 1) % 3;
            ASSERT_EQ(select(stream, other), KesStatusOk);
            EXPECT_EQ(next(stream), at(3, ++point, other));
            // Skips count all dimensions.
            ASSERT_EQ(__kesSkipAheadStream(stream.get(), 3 * 40 + 2), KesStatusOk);
            EXPECT_EQ(next(stream), at(3, point + 41, other));
        }
}

TEST_P(EverySequence, RefusesWhatSelectsOrSkipsNothing) {
    const Stream stream = fresh(3);
    for (const int k : {3, -1})
        EXPECT_EQ(select(stream, k), KesStatusLeapfrogUnsupported);
    EXPECT_EQ(__kesLeapfrogStream(stream.get(), 0, 3), KesStatusLeapfrogUnsupported);
    for (const int n : {0, -1})
        EXPECT_EQ(__kesSkipAheadStream(stream.get(), n), KesStatusSkipAheadUnsupported);
    EXPECT_EQ(take<uint32_t>(stream, 99), take<uint32_t>(fresh(3), 99));
}

TEST_P(EverySequence, SkipsFromInsideAPointByItsOwnRule) {
    for (int before = 31; before < 35; ++before)
        for (int n = 1; n < 40; ++n) {
            const Stream stream = fresh(5);
            take<uint32_t>(stream, before);
            ASSERT_EQ(__kesSkipAheadStream(stream.get(), n), KesStatusOk);
            const int left = 35 - before, behind = n - left;
            int point = 6;
            if (behind >= 0) point += std::max(behind / 5 + sequence.skippedMore, 0);
            EXPECT_EQ(next(stream), at(5, point, (before + n) % 5))
                << before << " and " << n;
        }
}

TEST_P(EverySequence, FilesKeepTheSelection) {
    const Stream stream = fresh(9);
    take<uint32_t>(stream, 22);
    ASSERT_EQ(select(stream, 7), KesStatusOk);
    const Stream loaded = reloaded(stream);
    EXPECT_EQ(take<uint32_t>(loaded, 50), take<uint32_t>(stream, 50));
}

INSTANTIATE_TEST_SUITE_P(All, EverySequence, testing::ValuesIn(sequences),
                         [](const auto& row) { return row.param.name; });

} // namespace
