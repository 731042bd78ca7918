#include "failure.hpp"

#include "arguments.hpp"

#include <CLI/CLI.hpp>

#include <iostream>
#include <new>
#include <stdexcept>

namespace qorkes {
namespace {

constexpr const char* tooMany = "so many numbers do not fit into memory; ask for fewer";

int complain(std::string message, int exitStatus) {
    std::replace(message.begin(), message.end(), '\n', ' ');
    std::cerr << "qorkes: " << message << '\n';
    return exitStatus;
}

std::vector<std::string> commands(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands({}))
        names.push_back(command->get_name());
    return names;
}

/// The command whose help would have shown the right way.
std::string helpCommand(const CLI::App& app) {
    const auto chosen = app.get_subcommands();
    if (chosen.empty()) return app.get_name() + " --help";
    return app.get_name() + ' ' + helpCommand(*chosen[0]);
}

} // namespace

void fail(std::string message, int exitStatus) {
    throw Failure{std::move(message), exitStatus};
}

int runGuarded(CLI::App& app, int argc, char** argv) {
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty())
            fail("COMMAND: give one of " + listed(commands(app)));
        return 0;
    } catch (const CLI::Success& helpOrVersion) {
        return app.exit(helpOrVersion);
    } catch (const CLI::ParseError& error) {
        return complain(std::string(error.what()) + "; " + helpCommand(app) +
                            " shows what would be right",
                        statusOfBadInput);
    } catch (const Failure& failure) {
        return complain(failure.message, failure.exitStatus);
    } catch (const std::bad_alloc&) {
        return complain(tooMany, statusOfBadInput);
    } catch (const std::length_error&) {
        return complain(tooMany, statusOfBadInput);
    }
}

} // namespace qorkes
