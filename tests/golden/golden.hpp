// One line for everything that delivers numbers: its name, its first results and a
// digest of many. A change of one bit anywhere changes a digest.
#pragma once

#include <string>
#include <vector>

namespace qorkes {

struct GoldenRow {
    std::string name;
    std::string numbers; // digest and first results, in hexadecimal
    bool usesUnit;       // its last bits are the processor's own
};

/// Of the processor's own logarithm and angle, and of its estimates of reciprocals and
/// of their roots, over fixed arguments. No standard says how those round.
std::string digestOfUnit();

/// Kernels over fixed arguments, special ones among them.
void addKernels(std::vector<GoldenRow>& rows);

/// A million numbers of every generator and distribution; streams in files.
void addStreams(std::vector<GoldenRow>& rows);

/// Convolutions, correlations and transforms.
void addSignals(std::vector<GoldenRow>& rows);

} // namespace qorkes
