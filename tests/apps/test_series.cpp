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

TEST(Conv, PrintsThePartThatIsAskedFor) {
    const TemporaryFile series("1\n2\n3\n4\n5\n");
    const auto conv = [&](std::vector<std::string> options) {
        options.insert(options.begin(), {"conv", "-", series.path});
        return run(options, "1 10").out;
    };
    EXPECT_EQ(conv({"--start", "1", "--decimation", "2"}), "12\n34\n50\n");
    EXPECT_EQ(conv({"--start", "1", "--count", "2", "--mode", "direct"}), "12\n23\n");
    EXPECT_EQ(conv({"--stride-b", "2"}), "1\n13\n35\n50\n");
    EXPECT_EQ(conv({"--stride-b", "-1", "--count", "2"}), "5\n54\n");
    EXPECT_EQ(conv({"--stride-b", "0", "--shape-b", "2"}), "1\n11\n10\n");
    EXPECT_EQ(conv({"--shape-b", "2,1", "--stride-b", "3,0", "--shape-a", "1,2"}),
              "1,4\n10,40\n");
}

TEST(Corr, PrintsLagsFromTheFirstOn) {
    const TemporaryFile series("4 5 6 7 8"), image("1 0 0 0 1 0");
    EXPECT_EQ(run({"corr", "-", series.path}, "1 2 3").out,
              "12\n23\n32\n38\n44\n23\n8\n");
    EXPECT_EQ(run({"corr", "-", series.path, "--start", "-1", "--decimation", "3",
                   "--precision", "single"},
                  "1 2 3")
                  .out,
              "23\n44\n");
    // The rows of the image mirrored: 0 0 1, 0 1 0.
    EXPECT_EQ(run({"corr", "-", image.path, "--shape-a", "2,2", "--shape-b", "3,2",
                   "--stride-b", "-1,3", "--start", "-1,0", "--count", "3,1"},
                  "1 2 3 4")
                  .out,
              "0,4,5\n");
}

TEST(Corr, BadPartsAreNamed) {
    const auto refused = [](std::vector<std::string> options,
                            const std::vector<std::string>& words) {
        const TemporaryFile series("1 2 3 4");
        options.insert(options.begin(), {"corr", "-", series.path});
        expectRefusal(run(options, "1 2"), words);
    };
    refused({"--start", "4"}, {"--start", "-1 to 3"});
    refused({"--start", "0,0"}, {"--start", "2", "1"});
    refused({"--decimation", "0"}, {"--decimation", "'0'"});
    refused({"--count", "6"}, {"--count", "5"});
    refused({"--shape-b", "3"}, {"4 numbers", "--shape-b", "3"});
    refused({"--shape-b", "2,2"}, {"--shape-b", "2", "1"});
    refused({"--shape-b", "1,1,1,1,1,1,1,1"}, {"--shape-b", "7"});
    refused({"--shape-b", "3", "--stride-b", "2"}, {"--stride-b", "5"});
    refused({"--stride-b", "0"}, {"--shape-b"});
    refused({"--shape-b", "65536,65537", "--stride-b", "0,0", "--shape-a", "1,2",
             "--count", "1,1"},
            {"memory"});
    refused({"--mode", "fast"}, {"--mode", "direct"});
    refused({"--mode", "fft", "--shape-a", "2,1", "--shape-b", "2,2"}, {"--mode"});
}

TEST(Series, BadInputIsNamed) {
    expectRefusal(run({"fft"}, "1 2 3"), {"standard input", "3", "power of two"});
    expectRefusal(run({"fft"}, "# nothing\n"), {"standard input"});
    expectRefusal(run({"fft"}, "1 x"), {"'x'"});
    expectRefusal(run({"conv", "-", "missing"}, "1"), {"missing"});
    expectRefusal(run({"conv", "-"}, "1"), {"B"});
}
