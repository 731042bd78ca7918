#include "run.hpp"

#include <cstdio>
#include <fstream>

using namespace qorkes;

namespace {

using Arguments = std::vector<std::string>;

class StreamCommand : public testing::Test {
protected:
    const std::string file = testing::TempDir() + "qorkes-test-program.stream";
    ~StreamCommand() override { std::remove(file.c_str()); }

    /// "qorkes stream VERB FILE ..."; returns what it writes.
    std::string stream(const std::string& verb, const Arguments& more = {}) const {
        Arguments arguments = {"stream", verb, file};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        return outcome.out;
    }
};

} // namespace

TEST_F(StreamCommand, LoadGoesOnWhereTheSavedStreamWas) {
    for (const std::string generator : {"MT19937", "R250", "MRG32K3A", "MCG31M1"}) {
        const Arguments draw = {"draw",    "uniform", "--generator",
                                generator, "--seed",  "5,6"};
        Arguments longer = draw;
        longer.insert(longer.end(), {"--count", "20"});
        const std::string first = run(draw).out, whole = run(longer).out;

        EXPECT_EQ(stream("save", {"--generator", generator, "--seed", "5,6"}), "");
        for (int i = 0; i < 2; ++i) EXPECT_EQ(stream("load", {"uniform"}), first);
        EXPECT_EQ(stream("load", {"uniform", "--update"}), first);
        EXPECT_EQ(first + stream("load", {"uniform", "--update"}), whole);
    }
}

TEST_F(StreamCommand, JumpsBeforeAndAfterTheFile) {
    const Arguments jumps = {"--generator", "MCG59", "--leapfrog", "1/3", "--skip"};
    Arguments save = jumps, draw = jumps;
    save.push_back("4");
    draw.insert(draw.begin(), {"draw", "bits"});
    draw.push_back("10");
    stream("save", save);
    EXPECT_EQ(stream("load", {"bits", "--skip", "6"}), run(draw).out);
}

TEST_F(StreamCommand, InfoTellsWhatTheFileHolds) {
    stream("save", {"--generator", "mt19937"});
    const std::string text = stream("info");
    for (const char* words :
         {"generator   MT19937\n", "Mersenne", "2500 bytes", "chunks      0\n"})
        EXPECT_NE(text.find(words), std::string::npos) << text;
    EXPECT_EQ(text.find("member"), std::string::npos);
    stream("save", {"--generator", "niederreiter", "--dimensions", "318"});
    EXPECT_NE(stream("info").find("43264 bytes"), std::string::npos);
}

TEST_F(StreamCommand, RefusesInOneLine) {
    stream("save", {"--generator", "MCG59"});
    std::ifstream in(file, std::ios::binary);
    const std::string whole(std::istreambuf_iterator<char>(in), {});
    std::string otherVersion = whole, abstractKind = whole;
    otherVersion[3] = 1;
    abstractKind[6] =
        sizeof(void*) == 4 ? 20 : 32; // bytes of an integer stream's state
    abstractKind[14] = char(0xA0);
    abstractKind += "pointers of any width";
    const struct {
        std::string contents;
        const char* words;
    } files[] = {{"", "ends too early"},
                 {whole.substr(0, 31), "ends too early"},
                 {"year,volume of the Nile", "is not a stream"},
                 {otherVersion, "another version"},
                 {abstractKind, "abstract stream"}};
    for (const auto& [contents, words] : files) {
        const TemporaryFile altered(contents);
        expectRefusal(run({"stream", "info", altered.path}), {altered.path, words});
        expectRefusal(run({"stream", "load", altered.path, "bits"}), {words});
    }
    expectRefusal(run({"stream", "info", "no/such"}), {"no/such", "No such file"});
    expectRefusal(run({"stream", "save", "x", "--generator", "R250", "--skip", "1"}),
                  {"--skip 1", "R250"});
    expectRefusal(run({"stream", "load", file, "bit"}), {"'bit'", "bits"});
    expectRefusal(run({"stream"}), {"qorkes stream --help"});
    expectRefusal(run({"stream", "load", file}), {"qorkes stream load --help"});
    EXPECT_EQ(run({"stream", "save", "no/such"}).status, 1);
}
