// Tables of powers of two in the forms that the unit reads fastest.
#pragma once

#include <common/ext.hpp>

namespace qorkes {

/// 80-bit rows as two doubles whose sum is exact, which costs less than a load of 80
/// bits, found by their place in bytes: masked steps are one.
struct Row {
    double high, low;
};
static_assert(sizeof(Row) == 16);
template <int n> struct Rows {
    Row rows[n];

    constexpr Rows(const ext (&values)[n], ext scale) : rows{} {
        for (int j = 0; j < n; ++j) {
            const ext value = values[j] * scale;
            const auto high = static_cast<double>(value);
            rows[j] = {high, static_cast<double>(value - high)};
        }
    }
    QORKES_INLINE ext at(uint32_t place) const {
        const auto* row =
            reinterpret_cast<const Row*>(reinterpret_cast<const char*>(rows) + place);
        return ext{row->high} + row->low;
    }
};

/// 2^k for each k modulo 512, which serves every float result that is kept.
struct SinglePowers {
    double row[512];

    constexpr SinglePowers() : row{} {
        for (uint32_t i = 0; i < 512; ++i) {
            const uint32_t k = i < 256 ? i : i - 512;
            row[i] = std::bit_cast<double>(uint64_t{k + 1023} << 52);
        }
    }
    QORKES_INLINE const double& at(uint32_t k) const { return row[k & 0x1FF]; }
};
constexpr SinglePowers singlePowers;

} // namespace qorkes
