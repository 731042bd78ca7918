// What the processor contributes.
#include "digest.hpp"

#include <common/ext.hpp>
#include <support/platform.hpp>

#include <xmmintrin.h>

namespace qorkes {
namespace {

[[gnu::target("sse")]] void addEstimates(Digest& digest, float x) {
    const __m128 argument = _mm_set_ss(x);
    digest.add(_mm_cvtss_f32(_mm_rcp_ss(argument)));
    digest.add(_mm_cvtss_f32(_mm_rsqrt_ss(argument)));
}

} // namespace

std::string digestOfUnit() {
    test::Random random(1);
    Digest digest;
    for (std::size_t i = 0; i < arguments; ++i) {
        const ext x = random() * 0x1p-32L + 0x1p-40L, y = random() * 0x1p-32L;
        for (const ext result : {timesLog2(1, x), angleOf(y, x)}) {
            digest.add(round64(result));
            digest.add(round64((result - round64(result)) * 0x1p+60L));
        }
        addEstimates(digest, round32(x));
    }
    return digest.text();
}

} // namespace qorkes
