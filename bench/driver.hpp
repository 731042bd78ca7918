// What is compared with what. Our entry and two builds of its peer, one for narrower
// and one for wider registers, run alternately in one process on arguments of the same
// kind, so that a ratio of their times means something on a machine that others use.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace qorkes::bench {

/// Each does the same amount of work.
struct Contest {
    std::function<void()> ours, narrow, wide;
};

struct Row {
    std::string ours;      // double Sqrt_HA
    std::string arguments; // [0.01, 100)
    std::string peer;      // sqrt
    std::function<Contest(int n)> prepare;
};

/// A row of one size. Its peer is a library with a scalar (narrow) and a SIMD (wide)
/// form, or loops compiled both ways.
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
std::vector<SizedRow> taskRows();

} // namespace qorkes::bench
