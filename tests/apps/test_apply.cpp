#include "run.hpp"

#include <gtest/gtest.h>

using namespace qorkes;

namespace {

const std::string nile = QORKES_EXAMPLES "/nile/nile.csv";

Outcome applySqrt(std::vector<std::string> options, const std::string& input) {
    options.insert(options.begin(), {"apply", "sqrt"});
    return run(options, input);
}

} // namespace

TEST(Apply, ReadsEveryFormOfText) {
    const struct {
        std::vector<std::string> options;
        std::string input, out;
    } cases[] = {
        {{}, "4", "2\n"},
        {{}, "4 9\n\t16\n", "2\n3\n4\n"},
        {{"-"}, "# flow\r\nvolume\r\n4\r\n\r\n9\r\n", "2\n3\n"},
        {{"--column", "2"}, "1,4\n2,9\n", "2\n3\n"},
        {{"--column", "2"}, "1 4\n2\t 9", "2\n3\n"},
        {{"--column", "2"}, "a,b\n1,4\n2,9\n", "2\n3\n"},
        {{"--column", "b"}, "a b\n1 4\n2 9\n", "2\n3\n"},
        {{"--column", "m, n"}, "\xEF\xBB\xBFl , \"m, n\"\n1,4\nx, 9 \n", "2\n3\n"},
        {{"--column", "a"},
         "\xEF\xBB\xBF"
         "a,b\n4,\n",
         "2\n"},
        {{}, "+4 0x1p-2 4e0 inf 1e-320\n", "2\n0.5\n2\ninf\n9.99994433575849e-161\n"},
    };
    for (const auto& [options, input, out] : cases) {
        const Outcome outcome = applySqrt(options, input);
        EXPECT_EQ(outcome.out, out) << input;
        EXPECT_EQ(outcome.err, "");
        EXPECT_EQ(outcome.status, 0);
    }
}

TEST(Apply, RefusesWhatIsNoNumberAndSaysWhere) {
    const struct {
        std::vector<std::string> options;
        std::string input;
        std::vector<std::string> words;
    } cases[] = {
        {{}, "", {"standard input", "no numbers"}},
        {{}, "volume\n", {"no numbers", "volume"}},
        {{}, "4\n\nabc\n", {"standard input, line 3", "'abc'"}},
        {{}, "4\n9x 1\n", {"line 2", "'9x'"}},
        {{}, "4\n1e400\n", {"line 2", "'1e400'", "too large"}},
        {{"--precision", "single"}, "1e39", {"line 1", "'1e39'", "single"}},
        {{}, "v\n4\nNA\n", {"line 3", "'NA'"}},
        {{"--column", "b"}, "a,b\n1,2\n3,\n", {"line 3", "empty"}},
        {{"--column", "b"}, "a,b\n1,2\n3\n", {"line 3", "1 of the 2"}},
        {{"--column", "c"}, "a,b\n1,2\n", {"'c'", "a, b"}},
        {{"--column", "0"}, "1,2\n", {"'0'", "1 to 2"}},
        {{}, "1,2\n", {"2 columns", "--column", "1 to 2"}},
        {{}, "a b\n1 2\n", {"2 columns", "--column", "a, b"}},
        {{"nowhere.csv"}, "", {"nowhere.csv", "No such file"}},
        {{"/"}, "", {"/", "Is a directory"}},
        {{"--binary"}, "4\nabc\n", {"line 2"}},
    };
    for (const auto& [options, input, words] : cases)
        expectRefusal(applySqrt(options, input), words);
}

TEST(Apply, TakesASecondArgumentFromANumberOrAFile) {
    const TemporaryFile divisors("a,b\n1,2\n1,4\n"), fewer("2\n");
    const auto divide = [](const std::vector<std::string>& options) {
        std::vector<std::string> arguments{"apply", "Div", "--with"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run(arguments, "1\n2\n");
    };
    EXPECT_EQ(divide({"4"}).out, "0.25\n0.5\n");
    EXPECT_EQ(divide({"3", "--precision", "single"}).out, "0.33333334\n0.6666667\n");
    EXPECT_EQ(divide({divisors.path, "--with-column", "b"}).out, "0.5\n0.5\n");
    expectRefusal(divide({fewer.path}), {fewer.path, "1 number", "2 "});
    expectRefusal(divide({"4x"}), {"4x"});
}

TEST(Apply, ReportsNameTheLineOfTheElement) {
    const std::string input = "v\n4\n\n-9\n0\n";
    const Outcome twice = run({"apply", "InvSqrt"}, input);
    EXPECT_EQ(twice.status, 0);
    EXPECT_EQ(twice.out, "0.5\nnan\ninf\n");
    EXPECT_EQ(twice.err,
              "qorkes: line 4: _qordInvSqrt_HA: argument is out of domain (ERRDOM), "
              "result nan\n"
              "qorkes: line 5: _qordInvSqrt_HA: argument caused singularity (SING), "
              "result inf\n");
    EXPECT_EQ(run({"apply", "Div", "--with", "-0", "--precision", "single",
                   "--accuracy", "11"},
                  "1 nan\n0\n")
                  .err,
              "qorkes: line 1: _qorsDiv_HA: argument caused singularity (SING), "
              "result -inf\n"
              "qorkes: line 2: _qorsDiv_HA: argument caused singularity (SING), "
              "result nan\n");
}

TEST(Apply, TextReadsBackAsTheSameBits) {
    expectSameBits<double>({"apply", "InvSqrt", nile, "--column", "volume"});
    expectSameBits<float>(
        {"apply", "InvSqrt", nile, "--column", "volume", "--precision", "single"});
}

TEST(Apply, SaysWhenTheOutputIsFull) {
    const TemporaryFile one("1\n");
    const std::string command = std::string(QORKES_PROGRAM) + " apply Sqrt " +
                                one.path + " >/dev/full 2>/dev/null";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
}
