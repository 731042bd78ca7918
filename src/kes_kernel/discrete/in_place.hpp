// Real numbers in the array that receives the integers made of them.
#pragma once

namespace qorkes {

using FloatInPlace [[gnu::may_alias]] = float;
using DoubleInPlace [[gnu::may_alias, gnu::aligned(4)]] = double;

} // namespace qorkes
