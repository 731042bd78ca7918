// Finds, proves and prints the parameters of the small Mersenne Twister family MT2203.
//
//   mt2203 search           adds to the file of rows the members that it lacks
//   mt2203 prove            proves the rows by the output that they give
//   mt2203 table <target>   writes the rows as the table that the library includes
#include <cstdio>
#include <exception>
#include <string>

#include <CLI/CLI.hpp>

#include "proof.hpp"
#include "rows.hpp"
#include "search.hpp"

int main(int argc, char** argv) {
    CLI::App app{"Parameters of the small Mersenne Twister family MT2203"};
    app.require_subcommand(1);
    std::string rows_path = MT2203_ROWS;
    app.add_option("--rows", rows_path, "file of the rows found")
        ->capture_default_str();

    app.add_subcommand("search", "add the members that the file of rows lacks")
        ->callback([&] { mt2203::search(rows_path); });

    int from = 0, to = mt2203::family_size - 1;
    const CLI::Range members(0, mt2203::family_size - 1);
    CLI::App* prove = app.add_subcommand("prove", "prove the rows and print k(v)");
    prove->add_option("--from", from, "first member")->check(members);
    prove->add_option("--to", to, "last member")->check(members);
    prove->callback([&] { mt2203::prove(rows_path, from, to); });

    std::string target;
    CLI::App* table = app.add_subcommand("table", "write the table for the library");
    table->add_option("target", target, "file to write")->required();
    table->callback([&] { mt2203::write_table(rows_path, target); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& fault) {
        return app.exit(fault) == 0 ? 0 : 2;
    } catch (const std::exception& fault) {
        std::fprintf(stderr, "mt2203: %s\n", fault.what());
        return 2;
    }
}
