#include "twister.hpp"

namespace mt2203 {
namespace {

constexpr int state_words = 69, middle = 34, low_bits = 5;
constexpr std::uint32_t lower_mask = (1u << low_bits) - 1;

} // namespace

/// The low bits of the very first word are no part of the state, and the words given
/// out start behind it.
std::vector<std::uint32_t> raw_words(std::uint32_t matrix, int count) {
    std::vector<std::uint32_t> x(std::size_t(state_words + count));
    x[0] = 0x80000000;
    for (std::size_t k = 0; k < std::size_t(count); ++k) {
        const std::uint32_t y = (x[k] & ~lower_mask) | (x[k + 1] & lower_mask);
        x[k + state_words] = x[k + middle] ^ (y >> 1) ^ ((y & 1) != 0 ? matrix : 0);
    }
    x.erase(x.begin(), x.begin() + state_words);
    return x;
}

std::uint32_t temper_first(std::uint32_t y) { return y ^ (y >> 12); }

std::uint32_t temper(std::uint32_t y, const Member& member) {
    y = temper_first(y);
    y ^= (y << 7) & member.mask_b;
    y ^= (y << 15) & member.mask_c;
    return y ^ (y >> 18);
}

std::vector<std::uint32_t> outputs(const Member& member, int count) {
    std::vector<std::uint32_t> words = raw_words(member.matrix, count);
    for (std::uint32_t& y : words) y = temper(y, member);
    return words;
}

/// Let X_j be the sequence of bit j, t the step to the next word, u = t^69 + t^34 and
/// u = t v. The recurrence says, with a the matrix word,
///   u X_j = X_(j+1) + a_j t X_0        for the upper bits, 5 <= j+1 <= 31,
///   u X_j = t X_(j+1) + a_j t X_0      for the lower bits, 1 <= j+1 < 5,
///   u X_31 = a_31 t X_0,
/// where the last two may be divided by t. Starting from X_0, each line gives the
/// next X as a multiple of X_0, and the last one the relation that X_0 obeys.
Polynomial characteristic_polynomial(std::uint32_t matrix) {
    Polynomial multiple = one;
    for (int j = 0; j < 32; ++j) {
        const int divided = j + 1 < low_bits || j == 31 ? 1 : 0;
        Polynomial next{};
        add_shifted(next, multiple, state_words - divided);
        add_shifted(next, multiple, middle - divided);
        if ((matrix >> j & 1) != 0) add_shifted(next, one, 1 - divided);
        multiple = next;
    }
    return multiple;
}

} // namespace mt2203
