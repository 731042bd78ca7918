#include "masks.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "equidistribution.hpp"

namespace mt2203 {
namespace {

/// A narrower beam fails on more matrix words and a wider one takes longer on each; the
/// time for a member is about least here.
constexpr std::size_t beam_width = 64;

constexpr std::uint32_t top_bit = 0x80000000;

/// Masks of which some bits are decided; the others are 0. `decided_b` are those of b;
/// the bits of c are decided from the top.
struct Masks {
    std::uint32_t b, c, decided_b;
};

/// Masks that settle the leading output bits, with the sum of the defects up to there.
struct Partial {
    Masks masks;
    int total;
    Lattice lattice;
};

/// One more output bit settled, starting from the masks at place `parent` of the beam.
struct Step {
    Masks masks;
    int total;
    Basis relations;
    std::size_t parent;
};

/// The sequences after the first stage of tempering that make up output bit j from the
/// top. The last shift of the tempering adds to a bit only one further up, and so
/// changes no k(v): it is left out.
Set output_bit(const Masks& masks, int j) {
    const auto after_b = [&masks](int i) {
        const Set added = (masks.b >> (31 - i) & 1) != 0 ? Set(1) << (i + 7) : 0;
        return Set(1) << i | added;
    };
    return after_b(j) ^ ((masks.c >> (31 - j) & 1) != 0 ? after_b(j + 15) : 0);
}

/// Decides the bit of b at distance i from the top, if it is open: both ways.
std::vector<Masks> decide_b(const Masks& masks, int i) {
    const std::uint32_t bit = top_bit >> i;
    if ((bit & mask_b_reach & ~masks.decided_b) == 0) return {masks};
    const std::uint32_t decided = masks.decided_b | bit;
    return {{masks.b | bit, masks.c, decided}, {masks.b, masks.c, decided}};
}

/// Decides all bits of the masks that output bit j from the top depends on: all ways.
std::vector<Masks> decide(const Masks& masks, int j) {
    const std::uint32_t bit = (top_bit >> j) & mask_c_reach;
    std::vector<Masks> result;
    for (const Masks& with_b : decide_b(masks, j)) {
        if (bit != 0)
            for (const Masks& both : decide_b(with_b, j + 15))
                result.push_back({both.b, both.c | bit, both.decided_b});
        result.push_back(with_b);
    }
    return result;
}

std::vector<Step> steps(const std::vector<Partial>& beam, int j) {
    std::vector<Step> result;
    for (std::size_t i = 0; i < beam.size(); ++i)
        for (const Masks& masks : decide(beam[i].masks, j)) {
            Basis relations = extended(beam[i].lattice, output_bit(masks, j));
            const int total = beam[i].total + defect(relations);
            result.push_back({masks, total, std::move(relations), i});
        }
    return result;
}

/// Leaves the steps with the least defects, in a fixed order.
void keep_best(std::vector<Step>& steps) {
    std::stable_sort(steps.begin(), steps.end(),
                     [](const Step& x, const Step& y) { return x.total < y.total; });
    if (steps.size() > beam_width) steps.erase(steps.begin() + beam_width, steps.end());
}

} // namespace

Tempered find_masks(std::uint32_t matrix, const Modulus& modulus) {
    std::vector<std::uint32_t> words = raw_words(matrix, exponent);
    for (std::uint32_t& y : words) y = temper_first(y);
    const auto sequences = numerators(words, modulus);

    std::vector<Partial> beam;
    for (const Masks& masks : decide({}, 0))
        beam.push_back({masks, 0, open(sequences, output_bit(masks, 0), modulus)});
    for (int j = 1; j < word_bits; ++j) {
        std::vector<Step> best = steps(beam, j);
        keep_best(best);
        std::vector<Partial> next;
        for (Step& step : best)
            next.push_back(
                {step.masks, step.total,
                 advance(beam[step.parent].lattice, std::move(step.relations), j + 1)});
        beam = std::move(next);
    }
    const auto& [masks, total, lattice] = beam.front();
    return {{matrix, masks.b, masks.c}, total};
}

} // namespace mt2203
