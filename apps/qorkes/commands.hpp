// The subcommands, one file each. A function here declares its options and examples;
// the work runs when the command line has been parsed.
#pragma once

namespace CLI {
class App;
}

namespace qorkes {

void addApply(CLI::App& app);
void addConv(CLI::App& app);
void addCorr(CLI::App& app);
void addDraw(CLI::App& app);
void addFft(CLI::App& app);
void addList(CLI::App& app);
void addStream(CLI::App& app);

} // namespace qorkes
