#include "run.hpp"

#include <gtest/gtest.h>

using namespace qorkes;

TEST(Fft, PrintsHalfTheSpectrum) {
    EXPECT_EQ(run({"fft"}, "1 0 0 0").out, "1,0\n1,0\n1,0\n");
    EXPECT_EQ(run({"fft"}, "0 1 0 0").out, "1,0\n0,-1\n-1,0\n");
    EXPECT_EQ(run({"fft", "--power", "--precision", "single"}, "0 1 0 0").out,
              "1\n1\n1\n");
    EXPECT_EQ(run({"fft", "--pad"}, "1 1 1").out, "3,0\n0,-1\n1,0\n");
    EXPECT_EQ(run({"fft"}, "7").out, "7,0\n");
    EXPECT_EQ(run({"fft", "--binary"}, "7").out.size(), 16u);
}

TEST(Conv, PrintsEverySum) {
    const TemporaryFile series("flow\n1\n2\n3\n");
    for (const char* precision : {"double", "single"})
        EXPECT_EQ(run({"conv", "-", series.path, "--precision", precision}, "1 10").out,
                  "1\n12\n23\n30\n");
}

TEST(Series, BadInputIsNamed) {
    expectRefusal(run({"fft"}, "1 2 3"), {"standard input", "3", "power of two"});
    expectRefusal(run({"fft"}, "# nothing\n"), {"standard input"});
    expectRefusal(run({"fft"}, "1 x"), {"'x'"});
    expectRefusal(run({"conv", "-", "missing"}, "1"), {"missing"});
    expectRefusal(run({"conv", "-"}, "1"), {"B"});
}
