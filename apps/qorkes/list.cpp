// qorkes list: what there is, with one line each.
#include "catalogue.hpp"
#include "commands.hpp"
#include "distributions.hpp"
#include "generators.hpp"
#include "output.hpp"
#include "text.hpp"

#include <CLI/CLI.hpp>

namespace qorkes {
namespace {

/// "  name   what it is".
std::string row(std::string name, const std::string& description, size_t width = 26) {
    name.resize(std::max(width, name.size() + 2), ' ');
    return "  " + name + description + '\n';
}

std::string functionRows() {
    std::string text = "Functions: qorkes apply NAME\n";
    for (const auto& function : catalogue::functions())
        text += row(function.name, function.formula);
    return text;
}

std::string generatorRows() {
    std::string text = "\nGenerators: qorkes draw ... --generator NAME[:MEMBER]\n";
    for (const auto& generator : catalogue::generators()) {
        std::string name = generator.name;
        if (generator.members > 1)
            name += ":0 to " + std::to_string(generator.members - 1);
        text += row(name, generator.description);
    }
    return text;
}

std::string distributionRows() {
    constexpr size_t width = 34;
    std::string text = "\nDistributions: qorkes draw NAME name=value...\n";
    for (const auto& distribution : catalogue::distributionsWithVectors()) {
        std::string name = distribution.name;
        for (const auto& parameter : distribution.parameters)
            name +=
                std::string(" ") + parameter.name + '=' + shortest(parameter.preset);
        text += row(name, distribution.description, width);
        for (size_t i = 0; i < distribution.methods.size(); ++i)
            text +=
                row("  --method " + std::to_string(i), distribution.methods[i], width);
    }
    return text;
}

} // namespace

void addList(CLI::App& app) {
    CLI::App* command = app.add_subcommand("list", "List what there is");
    command->footer("Example:\n  qorkes list\n");
    command->callback(
        [] { writeOut(functionRows() + generatorRows() + distributionRows()); });
}

} // namespace qorkes
