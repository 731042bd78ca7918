// Writes the irreducible polynomials over GF(2) that Niederreiter's sequence is made
// of:
//
//   niederr <target>
//
// A polynomial is a word, the coefficient of t^i in bit i. In ascending order, one is
// irreducible if none of those before it, of up to half its degree, divides it.
#include <bit>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

namespace {

constexpr std::size_t dimensions = 318;

int degree(std::uint32_t polynomial) { return std::bit_width(polynomial) - 1; }

bool divides(std::uint32_t divisor, std::uint32_t polynomial) {
    while (degree(polynomial) >= degree(divisor))
        polynomial ^= divisor << (degree(polynomial) - degree(divisor));
    return polynomial == 0;
}

std::vector<std::uint32_t> irreducible_polynomials(std::size_t count) {
    std::vector<std::uint32_t> found;
    const auto is_irreducible = [&](std::uint32_t polynomial) {
        for (const std::uint32_t divisor : found) {
            if (2 * degree(divisor) > degree(polynomial)) break;
            if (divides(divisor, polynomial)) return false;
        }
        return true;
    };
    for (std::uint32_t polynomial = 2; found.size() < count; ++polynomial)
        if (is_irreducible(polynomial)) found.push_back(polynomial);
    return found;
}

template <class Value>
void write_array(std::ostream& out, const char* declaration,
                 const std::vector<std::uint32_t>& polynomials, Value value) {
    out << "\nconst " << declaration << "[KesNiederrDimensions] = {";
    for (std::size_t i = 0; i < polynomials.size(); ++i)
        out << (i % 12 == 0 ? "\n    " : " ") << value(polynomials[i]) << ',';
    out << "\n};\n";
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: niederr <target>\n");
        return 2;
    }
    const std::filesystem::path target = argv[1];
    const auto polynomials = irreducible_polynomials(dimensions);
    std::ofstream out(target);
    out << "// The first " << dimensions
        << " irreducible polynomials over GF(2), in ascending order, the\n"
           "// coefficient of t^i in bit i; then their degrees.\n"
           "// Generator: tools/tables/niederr. Command:\n"
           "//   niederr "
        << target.filename().string() << '\n';
    write_array(out, "uint32_t uNiederrIrredPoly", polynomials,
                [](std::uint32_t polynomial) { return polynomial; });
    write_array(out, "int32_t iNiederrIrredPolyDeg", polynomials, degree);
    out.flush();
    if (!out) {
        std::fprintf(stderr, "niederr: cannot write %s\n", argv[1]);
        return 2;
    }
}
