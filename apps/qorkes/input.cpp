#include "input.hpp"

#include "arguments.hpp"
#include "failure.hpp"
#include "files.hpp"
#include "text.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace qorkes {
namespace {

struct Record {
    int line;
    std::vector<std::string> fields;
};

std::string readAll(const Source& source) {
    const bool standard = source.path == "-";
    const File file(standard ? stdin : std::fopen(source.path.c_str(), "rb"));
    const auto failToRead = [&] {
        fail(nameOf(source) + ": cannot be read (" + std::strerror(errno) +
             "); give a file of numbers, or - for standard input");
    };
    if (!file) failToRead();
    std::string text = readRest(file.get());
    if (std::ferror(file.get())) failToRead();
    return text;
}

/// Fields between blanks.
std::vector<std::string> splitAtBlanks(std::string_view line) {
    std::vector<std::string> fields;
    while (!line.empty()) {
        const size_t end = std::min(line.find_first_of(" \t"), line.size());
        fields.emplace_back(line.substr(0, end));
        line = trimmed(line.substr(end));
    }
    return fields;
}

/// Fields between commas; one in double quotes may hold commas.
std::vector<std::string> splitAtCommas(std::string_view line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (const char c : line) {
        if (c == '"')
            quoted = !quoted;
        else if (c == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += c;
    }
    for (std::string& field : fields) field = trimmed(field);
    return fields;
}

struct Table {
    std::vector<std::string> header; // empty if there is none
    std::vector<Record> records;
    bool commas;
};

bool isHeader(const std::vector<std::string>& fields) {
    return std::none_of(fields.begin(), fields.end(), [](const std::string& field) {
        return parseReal<double>(field).has_value();
    });
}

Table readTable(const Source& source) {
    const std::string text = readAll(source);
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::string_view rest = text;
    if (rest.starts_with(byteOrderMark)) rest.remove_prefix(byteOrderMark.size());

    Table table{};
    for (int number = 1; !rest.empty(); ++number) {
        const size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.empty() || line.front() == '#') continue;

        const bool first = table.header.empty() && table.records.empty();
        if (first) table.commas = line.find(',') != std::string_view::npos;
        auto fields = table.commas ? splitAtCommas(line) : splitAtBlanks(line);
        if (first && isHeader(fields))
            table.header = std::move(fields);
        else
            table.records.push_back({number, std::move(fields)});
    }
    if (table.records.empty())
        fail(nameOf(source) + ": holds no numbers" +
             (table.header.empty() ? "" : " under its header " + listed(table.header)));
    return table;
}

/// The place of the wanted column from 0, or -1 for all fields of every record.
int columnOf(const Table& table, const Source& source) {
    const auto& header = table.header;
    const auto columns =
        static_cast<int>((header.empty() ? table.records[0].fields : header).size());
    const std::string choices =
        header.empty() ? "1 to " + std::to_string(columns) : listed(header);
    if (source.column.empty()) {
        const bool free = header.empty() && !table.commas;
        if (columns > 1 && !free)
            fail(nameOf(source) + ": has " + std::to_string(columns) +
                 " columns; pick one by --column (" + choices + ")");
        return free ? -1 : 0;
    }
    const auto name = std::find(header.begin(), header.end(), source.column);
    if (name != header.end()) return static_cast<int>(name - header.begin());
    const auto number = parseWhole(source.column);
    if (!number || *number < 1 || *number > columns)
        fail(nameOf(source) + ": has no column '" + source.column + "'; it has " +
             choices);
    return static_cast<int>(*number) - 1;
}

template <class T>
T numberOf(const std::string& field, int line, const Source& source) {
    const auto value = parseReal<T>(field);
    if (value) return *value;
    const std::string where = nameOf(source) + ", line " + std::to_string(line) + ": ";
    if (field.empty()) fail(where + "the field is empty; a number belongs there");
    if (parseReal<double>(field))
        fail(where + "'" + field + "' is too large for single precision");
    fail(where + "'" + field + "' is not a number, or too large for one");
}

} // namespace

void addInput(CLI::App& command, Source& source) {
    source.path = "-";
    command
        .add_option("FILE", source.path,
                    "CSV with or without a header, or numbers between\n"
                    "blanks; standard input if missing or -")
        ->type_name("");
    command.add_option("--column", source.column, "the column to read")
        ->type_name("NAME|N");
}

std::string nameOf(const Source& source) {
    return source.path == "-" ? "standard input" : source.path;
}

template <class T> Numbers<T> readNumbers(const Source& source) {
    const Table table = readTable(source);
    const int column = columnOf(table, source);
    Numbers<T> numbers;
    const auto take = [&](const std::string& field, int line) {
        numbers.values.push_back(numberOf<T>(field, line, source));
        numbers.lines.push_back(line);
    };
    for (const auto& [line, fields] : table.records) {
        if (column < 0)
            for (const std::string& field : fields) take(field, line);
        else if (column < static_cast<int>(fields.size()))
            take(fields[static_cast<size_t>(column)], line);
        else
            fail(nameOf(source) + ", line " + std::to_string(line) + ": has " +
                 std::to_string(fields.size()) + " of the " +
                 std::to_string(column + 1) + " fields that the column needs");
    }
    return numbers;
}
template Numbers<double> readNumbers(const Source& source);
template Numbers<float> readNumbers(const Source& source);

} // namespace qorkes
