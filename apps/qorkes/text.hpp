// Numbers to and from text, strict on the way in, shortest on the way out; and text in
// pieces.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qorkes {

/// The correctly rounded value if the whole text is one number (decimal or hexadecimal,
/// inf and nan included); nothing if it is none, or too large for T.
template <class T> std::optional<T> parseReal(const std::string& text);

/// The value if the whole text is one decimal whole number.
std::optional<int64_t> parseWhole(std::string_view text);

/// The shortest text that parses to the same value; "nan" for every NaN.
template <class T> std::string shortest(T value);

std::string_view trimmed(std::string_view text);

/// The pieces between separators.
std::vector<std::string> split(std::string_view text, char separator);

/// What stands before and behind the first separator; the latter may be missing.
std::pair<std::string, std::optional<std::string>> cutAt(const std::string& text,
                                                         char separator);

} // namespace qorkes
