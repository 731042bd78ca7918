// Which of the two a kernel of sinh and cosh computes.
#pragma once

namespace qorkes {

/// Cosh is the even one, sinh the odd one.
enum class Parity { even, odd };

} // namespace qorkes
