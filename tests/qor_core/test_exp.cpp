#include <common/ext.hpp>
#include <support/element.hpp>

using namespace qorkes;
using namespace qorkes::test;

namespace {

#include <qor_core/exp/qor_a6_dexp_tables.inc>
#include <qor_core/exp/qor_a6_sexp_tables.inc>

static_assert(hasPattern(expTabFine[0], 0x3FFA, 0xE35846B8A818FBD6));
static_assert(hasPattern(expTabFine[1], 0x3FFA, 0xE35ABD117FE8D4D7));
static_assert(expTabMid[0] == 1 && expTabCoarse[0] == 1);
static_assert(hasPattern(expTabFloat[0], 0x3FCEBFBA4E02D234));
static_assert(hasPattern(expTabFloat[1], 0x3FCF1571FBC72371));
static_assert(hasPattern(expTabFloat[32], 0x3FD5BE26EE4D4407));
static_assert(hasPattern(expTabFloat[63], 0x3FDE6AEF00C2C5BD));

constexpr uint64_t doubleInfinity = 0x7FF0000000000000;

/// Twice the middle index of an argument: the status of a flagged double.
int flaggedStatus(uint64_t bits) {
    double x;
    setBits(x, bits);
    const auto steps = static_cast<int>(std::nearbyint(x * M_LOG2E * 16384));
    return 2 * (steps >> 4 & 31);
}

TEST(DoubleExp, LimitsAndSpecialValues) {
    Oracle oracle("Exp");
    const auto value = [&](uint64_t bits) {
        double x;
        setBits(x, bits);
        return bitsOf(oracle.rounded(x));
    };
    // Arguments whose value is exact or correctly rounded here, without a report.
    for (const uint64_t x : std::initializer_list<uint64_t>{
             0x0000000000000000, 0x8000000000000000, 0x0000000000000001,
             0x4086232BDD7ABCD2, 0xC086232BDD7ABCD2, 0x40862E4200000000,
             0x40862E42FEFA39EF})
        expectElement<double>(_qordExp_HA, "", 1.0, {x, value(x), {}});
    // Flagged ones: 709, both ends for either sign, the last denormals.
    for (const uint64_t x : std::initializer_list<uint64_t>{
             0x4086280000000000, 0x4086232BDD7ABCD3, 0x40862E41FFFFFFFF,
             0xC086232BDD7ABCD3, 0xC086280000000000, 0xC087480000000000,
             0xC0874910D52D3051})
        expectElement<double>(_qordExp_HA, "_qordExp_HA", 1.0,
                              {x, value(x), flaggedStatus(x)});
    constexpr Expected<double> cases[] = {
        {0x40862E42FEFA39F0, doubleInfinity, QOR_STATUS_OVERFLOW},
        {0x7FEFFFFFFFFFFFFF, doubleInfinity, QOR_STATUS_OVERFLOW},
        {0xC0874910D52D3052, 0, QOR_STATUS_UNDERFLOW},
        {0xFFEFFFFFFFFFFFFF, 0, QOR_STATUS_UNDERFLOW},
        {doubleInfinity, doubleInfinity, {}},
        {0xFFF0000000000000, 0, {}},
        {0x7FF0000000000001, 0x7FF8000000000001, {}},
        {0xFFF8000000000123, 0xFFF8000000000123, {}},
    };
    for (const auto& expected : cases)
        expectElement<double>(_qordExp_HA, "_qordExp_HA", 1.0, expected);
}

TEST(FloatExp, LimitsAndSpecialValues) {
    constexpr uint32_t infinity = 0x7F800000;
    constexpr Expected<float> cases[] = {
        {0x00000000, 0x3F800000, {}},
        {0x42B17217, 0x7F7FFF84, {}}, // the last before the limit
        {0x42B17218, infinity, QOR_STATUS_OVERFLOW},
        {0x7F7FFFFF, infinity, QOR_STATUS_OVERFLOW},
        {infinity, infinity, {}},
        {0xC2B17218, 0x001FFFFF, {}}, // denormal, beyond the limit in magnitude
        {0xC2CFF1B4, 0x00000001, {}},
        {0xC2CFF1B5, 0, QOR_STATUS_UNDERFLOW},
        {0xFF7FFFFF, 0, QOR_STATUS_UNDERFLOW},
        {0xFF800000, 0, {}},
        {0x7F800001, 0x7FC00001, {}},
        {0xFFC00123, 0xFFC00123, {}},
    };
    for (const auto& expected : cases)
        expectElement<float>(_qorsExp_HA, "_qorsExp_HA", 1.0f, expected);
}

// The product with log2(e) is rounded at 64 bits: its error grows with the argument.
TEST(Exp, Errors) {
    const auto doubleError = [](const Range& range) {
        return largestError<double>(_qordExp_HA, "Exp", range);
    };
    const auto floatError = [](const Range& range) {
        return largestError<float>(_qorsExp_HA, "Exp", range);
    };
    EXPECT_LE(doubleError({1e-20, 20, Sign::both}), 0.52);
    EXPECT_LE(doubleError({20, 709.78, Sign::positive}), 0.80);
    EXPECT_LE(doubleError({20, 708.39, Sign::negative}), 0.80);
    EXPECT_LE(doubleError({708.40, 745.13, Sign::negative}), 0.78);
    EXPECT_LE(floatError({1e-10, 88.7, Sign::both}), 0.66);
    EXPECT_LE(floatError({88, 103.9, Sign::negative}), 0.66);
}

} // namespace
