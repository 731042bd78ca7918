// Dice thrown with numbers of a hardware source.
//
// Reads words.txt, 3000 words of 32 bits from the random source of a processor (its
// rdrand instruction; `od -An -vtu4 -w4 -N12000 /dev/random` makes such a file too),
// and feeds them to an abstract stream. Whatever draws from streams then draws from the
// hardware; here it is a die, until the numbers run out.
#include <qorkes/kes.h>

#include <cstdio>
#include <fstream>
#include <vector>

namespace {

constexpr int bufferSize = 256;
constexpr int throwsAtOnce = 100;

std::ifstream source;

/// Fills the buffer from element idx on, round its end, with what the source still has.
int readNumbers(StreamState*, int* n, double* buffer, int*, int* nmax, int* idx) {
    int count = 0;
    for (uint32_t word; count < *nmax && source >> word; ++count)
        buffer[(*idx + count) % *n] = word * 0x1p-32;
    return count;
}

/// How often each side came up.
struct Throws {
    int total = 0;
    int sides[6] = {};
};

/// Throws until the stream gives no more; returns the status it gives instead.
int throwDice(StreamState* stream, Throws& throws) {
    for (;;) {
        double r[throwsAtOnce];
        const int status = _kesdRngUniform(0, stream, throwsAtOnce, r, 0.0, 6.0);
        if (status < 0) return status;
        for (const double x : r) ++throws.sides[static_cast<int>(x)];
        throws.total += throwsAtOnce;
    }
}

void print(const Throws& throws) {
    const double expected = throws.total / 6.0;
    double chiSquare = 0;
    for (int side = 0; side < 6; ++side) {
        const double excess = throws.sides[side] - expected;
        chiSquare += excess * excess / expected;
        std::printf("  %d  %5d\n", side + 1, throws.sides[side]);
    }
    std::printf("\n  %d throws, %.1f of each side expected\n", throws.total, expected);
    std::printf("  chi-square %.2f; a fair die stays below 15.09 in 99 of 100 trials\n",
                chiSquare);
}

} // namespace

int main(int argc, char** argv) {
    source.open(argc > 1 ? argv[1] : "examples/hardware/words.txt");
    std::vector<double> buffer(bufferSize);
    StreamState* stream = nullptr;
    if (!source || __kesdNewAbstractStream(&stream, bufferSize, buffer.data(), 0, 1,
                                           readNumbers) < 0) {
        std::fprintf(stderr,
                     "usage: hardware-demo WORDS.TXT, whole numbers below 2^32\n");
        return 2;
    }
    Throws throws;
    const int status = throwDice(stream, throws);
    __kesDeleteStream(&stream);
    if (status != KesStatusNoNumbers || throws.total == 0) {
        std::fprintf(stderr, "hardware-demo: no numbers in the file\n");
        return 1;
    }
    std::printf("Dice from a hardware source, until its numbers ran out\n\n");
    print(throws);
    return 0;
}
