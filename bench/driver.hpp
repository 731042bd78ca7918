// What is compared with what. Our entry and both builds of its peer, a loop compiled
// for x87 and one for SSE2, run alternately in one process on arguments of the same
// kind, so that a ratio of their times means something on a machine that others use.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace qorkes::bench {

/// Each does the same amount of work.
struct Contest {
    std::function<void()> ours, x87, sse2;
};

struct Row {
    std::string ours;      // double Sqrt_HA
    std::string arguments; // [0.01, 100)
    std::string peer;      // sqrt
    std::function<Contest(int n)> prepare;
};

/// A row of one size, whose peer is a library with a scalar (x87) and a SIMD (sse2)
/// form.
struct SizedRow {
    std::string ours;
    std::string size;
    std::string peer;
    std::function<Contest()> prepare;
};

/// What is made once and has no peer.
struct SetUp {
    std::string ours; // A stream of ...
    std::function<void()> make;
};

std::vector<Row> distributionRows();
std::vector<Row> kernelRows();
std::vector<Row> streamRows();
std::vector<SizedRow> signalRows();
SetUp largestSetUp();

} // namespace qorkes::bench
