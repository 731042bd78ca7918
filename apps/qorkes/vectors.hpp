// Normal vectors: a distribution whose parameters are lists.
#pragma once

#include "drawing.hpp"

namespace qorkes {

/// Does for the distribution of vectors what writeDrawn() does for others.
void writeVectors(const Drawing& drawing, const catalogue::Distribution& distribution,
                  const std::function<StreamState*()>& open);

} // namespace qorkes
