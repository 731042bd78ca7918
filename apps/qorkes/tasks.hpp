// What conv and corr share: two arrays of any rank, and which part of their convolution
// or correlation is computed.
#pragma once

namespace CLI {
class App;
}

namespace qorkes {

/// Declares the arguments and the run of a command; job as __kesNewTask takes it.
void addTaskOptions(CLI::App& command, int job);

} // namespace qorkes
