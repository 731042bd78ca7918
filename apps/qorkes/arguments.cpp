#include "arguments.hpp"

#include "failure.hpp"
#include "text.hpp"

#include <CLI/CLI.hpp>

namespace qorkes {

std::string listed(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
    return text;
}

void failChoice(const std::string& argument, const std::string& given,
                const std::vector<std::string>& choices) {
    fail(argument + ": there is no '" + given + "'; there is " + listed(choices));
}

void addPrecision(CLI::App& command, std::string& precision, const char* help) {
    command.add_option("--precision", precision, help)->type_name("double|single");
}

bool isSingle(const std::string& precision) {
    if (precision != "single" && precision != "double")
        failChoice("--precision", precision, {"double", "single"});
    return precision == "single";
}

int64_t wholeNumber(const std::string& argument, const std::string& text, int64_t low,
                    int64_t high) {
    const auto value = parseWhole(text);
    if (!value || *value < low || *value > high)
        fail(argument + ": '" + text + "' is not a whole number from " +
             std::to_string(low) + " to " + std::to_string(high));
    return *value;
}

} // namespace qorkes
