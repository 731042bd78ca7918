// The fastest time of each row, kept in a file for the program of the other build:
//
//     3.95e-06 double Exp_HA, [-10, 10), 1000
#pragma once

#include <algorithm>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace qorkes::bench {

/// Seconds by row and size. Rows that differ by their peer alone are one.
using FastestTimes = std::map<std::string, double>;

inline void note(FastestTimes& times, const std::string& key, double seconds) {
    double& least = times.emplace(key, seconds).first->second;
    least = std::min(least, seconds);
}

inline void write(const FastestTimes& times, const std::string& path) {
    std::ofstream out(path);
    for (const auto& [key, seconds] : times) out << seconds << ' ' << key << '\n';
    if (!out.flush()) throw std::runtime_error("cannot write " + path);
}

inline FastestTimes readTimes(const std::string& path) {
    std::ifstream in(path);
    FastestTimes times;
    std::string key;
    for (double seconds; in >> seconds && std::getline(in >> std::ws, key);)
        times[key] = seconds;
    return times;
}

} // namespace qorkes::bench
