// Finds, proves and prints the parameters of the multiplicative family WH.
//
//   wh prove            proves the members and prints the period of each
//   wh table <target>   proves them and writes the tables that the library includes
#include <cstdio>
#include <exception>
#include <string>

#include <CLI/CLI.hpp>

#include "family.hpp"
#include "proof.hpp"
#include "table.hpp"

int main(int argc, char** argv) {
    CLI::App app{"Parameters of the multiplicative family WH"};
    app.require_subcommand(1);
    app.add_subcommand("prove", "prove the members and print their periods")
        ->callback([] { wh::prove(wh::find_members()); });

    std::string target;
    CLI::App* table = app.add_subcommand("table", "prove, and write the tables");
    table->add_option("target", target, "file to write")->required();
    table->callback([&] {
        const auto members = wh::find_members();
        wh::prove(members);
        wh::write_tables(members, target);
    });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? 0 : 2;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "wh: %s\n", fault.what());
        return 2;
    }
}
