// The period of MT2203 members, proved from the words that their streams deliver: a few
// members a day, other ones tomorrow. tools/tables/mt2203 proves them all.
#include "stream.hpp"

#include <bitset>
#include <ctime>
#include <iostream>

using namespace qorkes;
using namespace qorkes::test;

namespace {

constexpr std::size_t degree = 2203; // of a Mersenne prime, 2^2203 - 1

using Polynomial = std::bitset<degree + 1>; // the coefficient of t^i is bit i

/// The shortest recurrence of a sequence of bits (Massey, 1969), newest term first: a
/// linear complexity of `degree`, or the zero polynomial.
Polynomial shortestRecurrence(const Words& words) {
    Polynomial connection(1), previous(1), window;
    std::size_t complexity = 0, since = 1;
    for (std::size_t i = 0; i < words.size(); ++i) {
        window = window << 1;
        window[0] = words[i] >> 31;
        if (((connection & window).count() & 1) == 0) {
            ++since;
            continue;
        }
        const Polynomial before = connection;
        connection ^= previous << since;
        ++since;
        if (2 * complexity > i) continue;
        complexity = i + 1 - complexity;
        if (complexity > degree) return {};
        previous = before;
        since = 1;
    }
    return complexity == degree ? connection : Polynomial();
}

/// Of prime degree: t^(2^degree) = t modulo the polynomial, and no root 0 or 1.
/// Squaring is linear, by the squares of the powers of t.
bool isIrreducible(const Polynomial& modulus) {
    if (!modulus[degree] || !modulus[0] || modulus.count() % 2 == 0) return false;
    const auto timesT = [&](const Polynomial& x) {
        const Polynomial product = x << 1;
        return product[degree] ? product ^ modulus : product;
    };
    std::vector<Polynomial> squares = {1};
    while (squares.size() < degree) squares.push_back(timesT(timesT(squares.back())));
    Polynomial power(2);
    for (std::size_t i = 0; i < degree; ++i) {
        Polynomial square;
        for (std::size_t term = 0; term < degree; ++term)
            if (power[term]) square ^= squares[term];
        power = square;
    }
    return power == Polynomial(2);
}

/// Top bits of a member's words: their recurrence is its characteristic polynomial if
/// that has the full degree, and then the period is 2^2203 - 1.
bool hasFullPeriod(int member) {
    const Stream stream = newStream(KesBrngMT2203 + member, {1, 2, 3});
    return isIrreducible(shortestRecurrence(take<uint32_t>(stream, 2 * degree)));
}

TEST(Mt2203, MembersOfTheDayHaveFullPeriod) {
    constexpr int membersADay = 3, seconds = 24 * 60 * 60;
    const auto day = static_cast<int>(std::time(nullptr) / seconds);
    for (int i = 0; i < membersADay; ++i) {
        const int member = (day * membersADay + i) % KesMt2203Members;
        std::cout << "member " << member << '\n';
        EXPECT_TRUE(hasFullPeriod(member)) << "member " << member;
    }
}

TEST(Mt2203, ProofRefusesReduciblePolynomials) {
    Polynomial even, odd;
    for (const std::size_t term : {degree, std::size_t{1}, std::size_t{0}})
        odd.set(term);
    for (const std::size_t term : {degree, std::size_t{0}}) even.set(term);
    EXPECT_FALSE(isIrreducible(even)); // the root 1
    EXPECT_FALSE(isIrreducible(odd));
    EXPECT_FALSE(isIrreducible(
        shortestRecurrence(take<uint32_t>(newStream(KesBrngR250, {1}), 2 * degree))));
}

} // namespace
