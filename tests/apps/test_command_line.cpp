#include "run.hpp"

#include <gtest/gtest.h>

using namespace qorkes;

TEST(Program, ExplainsEveryCommandWithExamples) {
    for (const char* command : {"apply", "draw", "list", "stream"}) {
        const Outcome outcome = run({command, "--help"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_NE(outcome.out.find("Example"), std::string::npos) << command;
    }
    EXPECT_NE(run({"--help"}).out.find("Examples"), std::string::npos);
    EXPECT_EQ(run({"--version"}).out, "qorkes " QORKES_VERSION "\n");
    const std::string list = run({"list"}).out;
    for (const char* name : {"InvSqrt", "MCG31M1", "uniform a=0 b=1"})
        EXPECT_NE(list.find(name), std::string::npos) << name;
}

TEST(Program, RefusesWrongCommandLinesInOneLine) {
    const struct {
        std::vector<std::string> arguments, words;
    } cases[] = {
        {{}, {"COMMAND", "apply, conv, draw, fft, list, stream"}},
        {{"aply"}, {"aply", "qorkes --help"}},
        {{"apply"}, {"FUNCTION", "qorkes apply --help"}},
        {{"apply", "Sqrt", "--colum", "1"}, {"--colum", "qorkes apply --help"}},
        {{"apply", "Sqrt", "a", "b"}, {" b;"}},
        {{"apply", "Sqrt", "--column"}, {"--column"}},
        {{"apply", "Sqr"}, {"'Sqr'", ", Sqrt"}},
        {{"apply", "Sqrt", "--precision", "half"}, {"'half'", "double, single"}},
        {{"apply", "Sqrt", "--accuracy", "21"}, {"'21'", "HA, 50"}},
        {{"apply", "Sqrt", "--accuracy", "50", "--precision", "single"},
         {"HA, 21, 11"}},
        {{"apply", "Sqrt", "--with", "1"}, {"--with", "one argument"}},
        {{"apply", "Div"}, {"--with", "a number or a file"}},
        {{"draw"}, {"DISTRIBUTION", "qorkes draw --help"}},
        {{"draw", "unifrm"}, {"'unifrm'", "uniform"}},
        {{"draw", "uniform", "c=1"}, {"'c'", "a, b"}},
        {{"draw", "uniform", "a"}, {"a: ", "finite number"}},
        {{"draw", "uniform", "a=x"}, {"a=x", "finite number"}},
        {{"draw", "uniform", "b=inf"}, {"b=inf", "finite number"}},
        {{"draw", "uniform", "a=2"}, {"a must be below b"}},
        {{"draw", "bits", "a=2"}, {"a=2", "no parameters"}},
        {{"draw", "bits", "--precision", "single"}, {"--precision", "bits"}},
        {{"draw", "uniform", "--precision", "half"}, {"'half'", "double, single"}},
        {{"draw", "uniform", "--generator", "MCG"}, {"'MCG'", "MCG31M1"}},
        {{"draw", "uniform", "--generator", "MCG59:1"}, {"member", "'1'", "0 to 0"}},
        {{"draw", "uniform", "--count", "-1"}, {"--count", "'-1'", "from 0"}},
        {{"draw", "uniform", "--count", "1e3"}, {"--count", "'1e3'"}},
        {{"draw", "uniform", "--count", "100000001"}, {"--count", "to 100000000"}},
        {{"draw", "uniform", "--count", "0", "--summary"}, {"--count", "from 1"}},
        {{"draw", "uniform", "--seed", "1,x"}, {"--seed", "'x'"}},
        {{"draw", "uniform", "--seed", "4294967296"}, {"--seed", "4294967295"}},
        {{"draw", "uniform", "--skip", "-1"}, {"--skip", "'-1'"}},
        {{"draw", "uniform", "--leapfrog", "3"}, {"--leapfrog", "'3'", "K/N"}},
        {{"draw", "uniform", "--leapfrog", "3/3"}, {"--leapfrog", "'3'", "0 to 2"}},
        {{"draw", "uniform", "--leapfrog", "0/0"}, {"--leapfrog", "'0'", "from 1"}},
        {{"draw", "uniform", "--dimensions", "2"}, {"--dimensions", "MT19937"}},
        {{"draw", "uniform", "--generator", "WH:273"}, {"WH", "'273'", "0 to 272"}},
        {{"draw", "uniform", "--generator", "Sobol", "--seed", "1"},
         {"--seed", "Sobol", "--dimensions"}},
        {{"draw", "uniform", "--generator", "Sobol", "--dimensions", "41"},
         {"--dimensions", "1 to 40"}},
        {{"draw", "uniform", "--generator", "Niederreiter", "--dimensions", "0"},
         {"--dimensions", "1 to 318"}},
        {{"draw", "uniform", "--generator", "Sobol", "--dimensions", "3", "--leapfrog",
          "0/2"},
         {"--leapfrog", "must be 3", "2"}},
        {{"draw", "uniform", "--generator", "Sobol", "--skip", "0"},
         {"--skip 0", "Sobol"}},
        {{"draw", "uniform", "--summary", "--binary"}, {"--summary", "--binary"}},
        {{"draw", "gaussian", "sigma=0"}, {"sigma=0", "above 0"}},
        {{"draw", "gaussian", "--method", "2"}, {"--method", "'2'", "0 to 1"}},
        {{"draw", "uniform", "--method", "1"}, {"--method", "'1'", "0 to 0"}},
        {{"draw", "uniform", "--picture", "a.png"}, {"--picture", "'a.png'", ".svg"}},
        {{"draw", "uniform", "--picture", "a.svg", "--count", "1"}, {"--count"}},
        {{"draw", "uniform", "--picture", "a.svg", "--binary"}, {"--picture"}},
        {{"apply", "Div", "--with-column", "2"}, {"--with-column", "--with"}},
    };
    for (const auto& [arguments, words] : cases) expectRefusal(run(arguments), words);
}
