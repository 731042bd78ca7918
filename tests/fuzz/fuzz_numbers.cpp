// Files of numbers, as every command of the program reads them: whatever the bytes,
// there is a list of numbers or one message; what was read reads back.
#include "fuzz.hpp"

#include <failure.hpp>
#include <input.hpp>
#include <text.hpp>

#include <algorithm>
#include <cmath>

using namespace qorkes;
using namespace qorkes::fuzz;

namespace {

template <class T> void readOnce(const Source& source) {
    try {
        const Numbers<T> numbers = readNumbers<T>(source);
        require(numbers.values.size() == numbers.lines.size(),
                "a line for each number");
        require(std::is_sorted(numbers.lines.begin(), numbers.lines.end()),
                "lines in order");
        for (const T x : numbers.values) {
            const auto again = parseReal<T>(shortest(x));
            require(again && (*again == x || (std::isnan(x) && std::isnan(*again))),
                    "shortest text reads back");
        }
    } catch (const Failure& failure) {
        require(failure.message.find('\n') == std::string::npos, "a message of a line");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const char* columns[] = {"", "1", "2", "volume"};
    const MemoryFile file(Bytes(data, size).subspan(1));
    const Source source{file.path(), columns[data[0] % 4]};
    readOnce<double>(source);
    readOnce<float>(source);
    return 0;
}
