// Rejection in blocks of attempts, each of two uniforms. Many attempts at a time go
// through the vector kernels before they are decided: one number at a time they take
// several times as long, and give the same bits.
#pragma once

#include <kes_kernel/frame.hpp>

#include <cstring>
#include <limits>

namespace qorkes {

constexpr int attemptsOfBlock = 512;

/// Attempts in succession without a variate after which parameters are taken to have
/// none: about a second of work, where legal parameters need a few attempts.
constexpr int patience = 1 << 20;

/// Attempts that go through the kernels together: enough for their speed, and few
/// enough for a caller's stack.
constexpr int attemptsOfPart = 128;
template <class T> using OfPart = T[attemptsOfPart];

/// The accepted ones of x, side by side in their order; returns how many they are. It
/// does not branch, since nobody could predict it.
template <class T, class Accepts>
QORKES_INLINE int gather(int count, T* x, Accepts&& accepts) {
    int accepted = 0;
    for (int k = 0; k < count; ++k) {
        const T candidate = x[k];
        const bool accept = accepts(k);
        x[accepted] = candidate;
        accepted += accept;
    }
    return accepted;
}

/// n variates to r by blocks of as many attempts as variates are missing, so that no
/// uniform is drawn in vain. `propose(count, u, place)` makes the candidates x of a
/// part of a block, x[k] of u[2k] and u[2k + 1]; it would stand at place[k] if all
/// attempts were accepted. `accepts(k)` decides on it. Where patience ends, what is
/// missing becomes NaN.
template <class T, class Propose, class Accepts>
QORKES_INLINE int byAttempts(StreamState* stream, int n, T* r, T* x, Propose&& propose,
                             Accepts&& accepts) {
    T u[2 * attemptsOfBlock];
    int status = KesStatusOk;
    for (int i = 0, inVain = 0; i < n;) {
        const int first = i;
        const int count = std::min(n - i, attemptsOfBlock);
        status = uniforms(stream, 2 * count, u);
        if (failed(status)) return status;
        for (int k = 0; k < count; k += attemptsOfPart) {
            const int part = std::min(count - k, attemptsOfPart);
            propose(part, u + 2 * k, r + first + k);
            const int accepted = gather(part, x, accepts);
            std::memcpy(r + i, x, static_cast<std::size_t>(accepted) * sizeof *r);
            i += accepted;
        }
        inVain = i == first ? inVain + count : 0;
        if (inVain < patience) continue;
        for (; i < n; ++i) r[i] = std::numeric_limits<T>::quiet_NaN();
    }
    return status;
}

} // namespace qorkes
