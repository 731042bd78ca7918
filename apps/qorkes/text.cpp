#include "text.hpp"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace qorkes {
namespace {

// Not std::from_chars: on the x87 unit its short way rounds twice.
double toReal(const char* s, char** end, double) { return std::strtod(s, end); }
float toReal(const char* s, char** end, float) { return std::strtof(s, end); }

bool namesInfinity(const std::string& text) {
    return text.find_first_of("iI") != std::string::npos;
}

} // namespace

template <class T> std::optional<T> parseReal(const std::string& text) {
    if (text.empty() || text != trimmed(text)) return {};
    char* end;
    const T value = toReal(text.c_str(), &end, T{});
    if (end != text.c_str() + text.size()) return {};
    if (std::isinf(value) && !namesInfinity(text)) return {};
    return value;
}
template std::optional<double> parseReal(const std::string& text);
template std::optional<float> parseReal(const std::string& text);

std::optional<int64_t> parseWhole(std::string_view text) {
    int64_t value;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return {};
    return value;
}

template <class T> std::string shortest(T value) {
    if constexpr (std::is_floating_point_v<T>)
        if (std::isnan(value)) return "nan";
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}
template std::string shortest(double value);
template std::string shortest(float value);
template std::string shortest(int32_t value);
template std::string shortest(uint32_t value);
template std::string shortest(uint64_t value);

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (size_t start = 0;;) {
        const size_t end = text.find(separator, start);
        pieces.emplace_back(text.substr(start, end - start));
        if (end == std::string_view::npos) return pieces;
        start = end + 1;
    }
}

std::pair<std::string, std::optional<std::string>> cutAt(const std::string& text,
                                                         char separator) {
    const size_t place = text.find(separator);
    if (place == std::string::npos) return {text, {}};
    return {text.substr(0, place), text.substr(place + 1)};
}

} // namespace qorkes
