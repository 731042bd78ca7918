#include "run.hpp"

#include <algorithm>
#include <fstream>

using namespace qorkes;

namespace {

using Lines = std::vector<std::string>;

Lines draw(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "draw");
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    std::istringstream text(outcome.out);
    Lines lines;
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
}

/// Elements first, first + step, ... of a plain draw.
Lines every(const Lines& plain, size_t first, size_t step, size_t count) {
    Lines lines;
    for (size_t i = 0; i < count; ++i) lines.push_back(plain.at(first + i * step));
    return lines;
}

} // namespace

TEST(Draw, BitsAreTheRecurrenceFromTheSeed) {
    Lines small, large;
    uint64_t x = 5, y = (uint64_t{3} << 32) + 7;
    for (int i = 0; i < 20; ++i) {
        small.push_back(std::to_string(x));
        large.push_back(std::to_string(y));
        x = x * 1132489760 % 0x7FFFFFFF;
        y = y * 302875106592253 & 0x7FFFFFFFFFFFFFF;
    }
    EXPECT_EQ(draw({"bits", "--generator", "mcg31m1", "--seed", "5", "--count", "20"}),
              small);
    EXPECT_EQ(
        draw({"bits", "--generator", "MCG59:0", "--seed", "7,3", "--count", "20"}),
        large);
}

TEST(Draw, SkipAndLeapfrogTakeElementsOfThePlainDraw) {
    for (const char* generator : {"MCG31M1", "MCG59"})
        for (const Lines& what : {Lines{"bits"}, Lines{"uniform", "a=-1", "b=3"},
                                  Lines{"uniform", "--precision", "single"}}) {
            const auto with = [&](const Lines& options) {
                Lines arguments = what;
                for (const char* option : {"--generator", generator, "--seed", "12345"})
                    arguments.push_back(option);
                arguments.insert(arguments.end(), options.begin(), options.end());
                return draw(arguments);
            };
            const Lines plain = with({"--count", "100"});
            EXPECT_EQ(with({}), every(plain, 0, 1, 10));
            EXPECT_EQ(with({"--skip", "17", "--count", "50"}), every(plain, 17, 1, 50));
            EXPECT_EQ(with({"--leapfrog", "2/7"}), every(plain, 2, 7, 10));
            EXPECT_EQ(with({"--leapfrog", "2/7", "--skip", "3"}),
                      every(plain, 23, 7, 10));
        }
}

TEST(Draw, PointsComeComponentByComponent) {
    for (const char* generator : {"Sobol", "Niederreiter"}) {
        const auto with = [&](const Lines& options) {
            Lines arguments = {"uniform", "--generator", generator, "--dimensions",
                               "3"};
            arguments.insert(arguments.end(), options.begin(), options.end());
            return draw(arguments);
        };
        const Lines plain = with({"--count", "60"});
        EXPECT_EQ(Lines(plain.begin(), plain.begin() + 2), (Lines{"0.5", "0.5"}));
        EXPECT_EQ(with({"--skip", "13"}), every(plain, 13, 1, 10));
        EXPECT_EQ(with({"--leapfrog", "1/3"}), every(plain, 1, 3, 10));
        EXPECT_EQ(with({"--leapfrog", "1/3", "--skip", "6"}), every(plain, 7, 3, 10));
    }
}

TEST(Draw, MembersOfWhGiveFourWordsALine) {
    const Lines lines =
        draw({"bits", "--generator", "WH:272", "--seed", "5,6,7,8", "--count", "2"});
    EXPECT_EQ(lines, (Lines{"5,6,7,8", "630,762,875,992"}));
}

TEST(Draw, UniformNumbersLieInTheirRange) {
    for (const char* precision : {"double", "single"})
        for (const std::string& line : draw({"uniform", "a=-3", "b=-2", "--count",
                                             "1000", "--precision", precision})) {
            EXPECT_GE(std::stod(line), -3);
            EXPECT_LE(std::stod(line), -2);
        }
    EXPECT_EQ(draw({"uniform", "--count", "0"}), Lines{});
}

TEST(Draw, TextReadsBackAsTheSameBits) {
    expectSameBits<double>({"draw", "uniform", "--count", "100"});
    expectSameBits<float>(
        {"draw", "uniform", "--count", "100", "--precision", "single"});
}

TEST(Draw, SummaryShowsExactMomentsAndAHistogram) {
    const Lines lines =
        draw({"uniform", "b=4", "--count", "10000", "--seed", "9", "--summary"});
    ASSERT_EQ(lines.size(), 9u + 1 + 8);
    const struct {
        size_t line;
        const char* name;
        double value, tolerance;
    } rows[] = {{1, "count", 10000, 0},         {2, "mean", 2, 0.05},
                {3, "deviation", 1.1547, 0.05}, {4, "minimum", 0, 0.01},
                {5, "lower quartile", 1, 0.1},  {6, "median", 2, 0.1},
                {7, "upper quartile", 3, 0.1},  {8, "maximum", 4, 0.01}};
    for (const auto& [line, name, value, tolerance] : rows) {
        EXPECT_NE(lines[line].find(name), std::string::npos) << lines[line];
        EXPECT_NEAR(std::stod(lines[line].substr(20)), value, tolerance) << lines[line];
    }
    EXPECT_NE(lines[3].find("1.1547"), std::string::npos) << lines[3];
    for (size_t bar = 10; bar < lines.size(); ++bar) {
        EXPECT_GE(std::count(lines[bar].begin(), lines[bar].end(), '#'), 40)
            << lines[bar];
        EXPECT_EQ(std::count(lines[bar].begin(), lines[bar].end(), '|'), 1)
            << lines[bar];
    }
    EXPECT_EQ(draw({"bits", "--count", "1", "--summary"}).size(), 9u);
}

TEST(Draw, VectorsOfTheLawAskedFor) {
    // The factor of this matrix has the rows 2, 0 and 3, 4.
    const Lines vectors = draw({"gaussianmv", "a=1,-5", "covariance=4,6,6,25"});
    const Lines normal = draw({"gaussian", "--count", "20"});
    for (size_t i = 0; i < 10; ++i) {
        const double x = std::stod(normal[2 * i]), y = std::stod(normal[2 * i + 1]);
        double first, second;
        std::sscanf(vectors.at(i).c_str(), "%lf,%lf", &first, &second);
        EXPECT_NEAR(first, 1 + 2 * x, 1e-14);
        EXPECT_NEAR(second, -5 + 3 * x + 4 * y, 1e-14);
    }
    EXPECT_EQ(draw({"gaussianmv", "covariance=9,0,0,9", "--precision", "single"})[9],
              draw({"gaussianmv", "a=0,0", "covariance=9,0,0,9", "--precision",
                    "single"})[9]);

    const Lines lines = draw({"gaussianmv", "a=1,-5", "covariance=4,6,6,25", "--count",
                              "10000", "--summary"});
    const auto row = [&](const char* name, size_t which) {
        for (const std::string& line : lines)
            if (line.starts_with(name) && which-- == 0) return line;
        return std::string();
    };
    EXPECT_NEAR(std::stod(row("mean", 0).substr(20)), 1, 0.1);
    EXPECT_NEAR(std::stod(row("mean", 1).substr(20)), -5, 0.25);
    EXPECT_NEAR(std::stod(row("standard", 1).substr(20)), 5, 0.2);
    EXPECT_NEAR(std::stod(row("correlation 1, 2", 0).substr(20)), 0.6, 0.03);
    EXPECT_TRUE(row("correlation", 0).ends_with(" 0.6"));
}

TEST(Draw, NoLawOfVectorsIsRefused) {
    const std::pair<const char*, const char*> refusals[] = {
        {"covariance=4,1,2,9", "symmetric"},    {"covariance=1,2,2,1", "definite"},
        {"covariance=1,2,3", "square"},         {"a=1,inf", "finite"},
        {"covariance=", "not a finite number"}, {"sigma=1", "a, covariance"}};
    for (const auto& [setting, word] : refusals)
        expectRefusal(run({"draw", "gaussianmv", setting}), {word});
    expectRefusal(run({"draw", "gaussianmv", "a=1", "covariance=1,0,0,1"}), {"square"});
    expectRefusal(run({"draw", "gaussianmv", "--count", "50000001"}), {"50000000"});
}

TEST(Draw, PictureShowsNumbersAndTheirLaw) {
    const TemporaryFile file("");
    const std::string picture = file.path + ".svg";
    const std::string path = std::getenv("PATH");
    const auto drawn = [&](const std::string& distribution) {
        draw({distribution, "--count", "1000", "--picture", picture});
        std::ifstream svg(picture);
        const std::string text(std::istreambuf_iterator<char>(svg), {});
        EXPECT_NE(text.find("</svg>"), std::string::npos) << text;
        EXPECT_NE(text.find("1000 numbers"), std::string::npos) << text;
        return text;
    };
    EXPECT_NE(drawn("gaussian").find(">exact<"), std::string::npos);
    EXPECT_EQ(drawn("bits").find(">exact<"), std::string::npos);
    EXPECT_NE(drawn("gaussianmv").find("component 2: gaussian"), std::string::npos);
    std::remove(picture.c_str());

    setenv("PATH", "/nowhere", 1);
    const Outcome outcome = run({"draw", "gaussian", "--picture", picture});
    setenv("PATH", path.c_str(), 1);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("gnuplot"), std::string::npos) << outcome.err;
    EXPECT_FALSE(std::ifstream(picture).is_open());
}

TEST(Draw, SummaryCountsFarTailsBesideTheHistogram) {
    const Lines lines = draw({"cauchy", "--count", "10000", "--summary"});
    EXPECT_NE(lines[10].find("below"), std::string::npos) << lines[10];
    EXPECT_NE(lines.back().find("above"), std::string::npos) << lines.back();
    EXPECT_GE(lines.size(), 9u + 1 + 8 + 2);
}
