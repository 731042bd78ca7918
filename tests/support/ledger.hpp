// With malloc and free of the including program, which is one source file: what is
// allocated, what is left behind, and an allocation that fails.
#pragma once

#include <algorithm>
#include <cstddef>

extern "C" void* __libc_malloc(size_t);
extern "C" void __libc_free(void*);

namespace qorkes::test {

struct Ledger {
    bool watching, keeping;
    int failingCall; // counted from 1, 0 for none
    int calls, live;
    size_t largest;
};
inline Ledger ledger;

/// Watches what `call` allocates.
template <class Call> int watched(int failingCall, Call call) {
    ledger = {true, false, failingCall, 0, 0, 0};
    const int status = call();
    ledger.watching = false;
    return status;
}

/// Lets the 1st, 2nd, ... allocation fail until `call` makes no further one; returns
/// how many it makes. `expect(status, k)` looks at each failure.
template <class Call, class Expect> int failingEach(Call call, Expect expect) {
    for (int k = 1;; ++k) {
        const int status = watched(k, call);
        if (ledger.calls < k) return k - 1;
        expect(status, k);
    }
}

} // namespace qorkes::test

void* malloc(size_t size) {
    using qorkes::test::ledger;
    if (!ledger.watching) return __libc_malloc(size);
    ledger.largest = std::max(ledger.largest, size);
    if (++ledger.calls == ledger.failingCall) return nullptr;
    ++ledger.live;
    return __libc_malloc(size);
}
void free(void* p) {
    using qorkes::test::ledger;
    if (ledger.watching && p) --ledger.live;
    if (!ledger.keeping) __libc_free(p);
}
