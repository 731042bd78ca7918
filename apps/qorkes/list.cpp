// qorkes list: what there is, with one line each.
#include "catalogue.hpp"
#include "commands.hpp"
#include "output.hpp"

#include <CLI/CLI.hpp>

namespace qorkes {
namespace {

/// "  name   what it is".
std::string row(std::string name, const std::string& description) {
    constexpr size_t width = 26;
    name.resize(std::max(width, name.size() + 2), ' ');
    return "  " + name + description + '\n';
}

std::string functionRows() {
    std::string text = "Functions: qorkes apply NAME\n";
    for (const auto& function : catalogue::functions())
        text += row(function.name, function.formula);
    return text;
}

} // namespace

void addList(CLI::App& app) {
    CLI::App* command = app.add_subcommand("list", "List what there is");
    command->footer("Example:\n  qorkes list\n");
    command->callback([] { writeOut(functionRows()); });
}

} // namespace qorkes
