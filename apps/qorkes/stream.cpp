// qorkes stream: streams in files. save makes one, load goes on with it, info tells
// what a file holds.
#include "commands.hpp"
#include "drawing.hpp"
#include "failure.hpp"
#include "output.hpp"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>

namespace qorkes {
namespace {

void save(const StreamState* stream, const std::string& path) {
    if (__kesSaveStreamF(stream, path.c_str(), -1) < 0)
        fail(path + ": cannot be written (" + std::strerror(errno) + ")",
             statusOfOutputTrouble);
}

[[noreturn]] void failLoading(int status, const std::string& path) {
    switch (status) {
    case KesStatusFileOpen:
        fail(path + ": cannot be opened (" + std::strerror(errno) + ")");
    case KesStatusBadFileFormat:
        fail(path + ": is not a stream of a generator that is known here");
    case KesStatusBadFileVersion:
        fail(path + ": is a stream file of another version than 0");
    case KesStatusFileRead:
        fail(path + ": ends too early, or is no file, for a stream");
    default:
        fail(path + ": cannot be read as a stream; status " + std::to_string(status));
    }
}

/// A stream of one of the generators that the program lists.
Stream load(const std::string& path) {
    StreamState* loaded = nullptr;
    const int status = __kesLoadStreamF(&loaded, path.c_str());
    if (status < 0) failLoading(status, path);
    Stream stream(loaded);
    if (!generatorOf(loaded))
        fail(path + ": is an abstract stream, whose numbers stayed with the program "
                    "that saved it");
    return stream;
}

/// What a distribution keeps with a stream, by the chunk's id.
const char* keptFor(int id) {
    static constexpr const char* rows[] = {
        "a pair of Gaussian floats", "a pair of Gaussian doubles",
        "the set-up of Poisson",     "the set-up of Negbinomial",
        "the set-up of Binomial",    "the set-up of Hypergeometric",
        "Gamma's spare double",      "Gamma's spare float"};
    return id >= 1 && id <= 8 ? rows[id - 1] : "unknown";
}

std::string line(std::string name, const std::string& value) {
    name.resize(12, ' ');
    return name + value + '\n';
}

std::string description(const StreamState* stream) {
    const catalogue::Generator& generator = *generatorOf(stream);
    BrngProperties row;
    __kesGetBrngProperties(stream->BrngId, &row);
    int number, member;
    __kesGetBrngBaseOffset(stream->BrngId, &number, &member);

    std::string text = line("generator", generator.name);
    text += line("", generator.description);
    if (generator.members > 1)
        text += line("member", std::to_string(member) + " of 0 to " +
                                   std::to_string(generator.members - 1));
    const auto stateSize = row.StateSize - int{sizeof(StreamState)};
    text += line("state", std::to_string(stateSize) + " bytes");
    text += line("chunks", std::to_string(__kesGetNumChunks(stream)));
    const auto* chunk =
        reinterpret_cast<const Chunk*>(static_cast<intptr_t>(stream->Chunks));
    for (; chunk; chunk = chunk->next)
        text += line("", std::string(keptFor(chunk->id)) + ", " +
                             std::to_string(chunk->size) + " bytes");
    return text;
}

void addFile(CLI::App& command, std::string& path) {
    command.add_option("FILE", path, "the stream file")->required()->type_name("");
}

void addSave(CLI::App& app) {
    auto path = std::make_shared<std::string>();
    auto source = std::make_shared<StreamSource>();
    CLI::App* command =
        app.add_subcommand("save", "Make a stream and write it to FILE");
    addFile(*command, *path);
    addSourceOptions(*command, *source);
    command->footer("A file that is there is written over.\n"
                    "\nExample:\n"
                    "  qorkes stream save lab.stream --generator MT19937 --seed 7\n");
    command->callback([path, source] { save(newStream(*source).get(), *path); });
}

void addLoad(CLI::App& app) {
    auto path = std::make_shared<std::string>();
    auto jumps = std::make_shared<Jumps>();
    auto drawing = std::make_shared<Drawing>();
    auto update = std::make_shared<bool>(false);
    CLI::App* command = app.add_subcommand("load", "Draw from the stream of FILE");
    addFile(*command, *path);
    addDistribution(*command, *drawing);
    addJumpOptions(*command, *jumps);
    addDrawingOptions(*command, *drawing);
    command->add_flag("--update", *update,
                      "then write the stream to FILE again, so that\n"
                      "the next draw goes on where this one ended");
    command->footer("Without --update the file stays as it is, and the same command\n"
                    "gives the same numbers again.\n"
                    "\nExamples:\n"
                    "  qorkes stream load lab.stream uniform --count 5\n"
                    "  qorkes stream load lab.stream uniform --count 5 --update\n");
    command->callback([path, jumps, drawing, update] {
        Stream stream;
        writeDrawn(*drawing, [&] {
            stream = load(*path);
            moveOn(stream.get(), *jumps);
            return stream.get();
        });
        if (*update) save(stream.get(), *path);
    });
}

void addInfo(CLI::App& app) {
    auto path = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("info", "Tell what stream FILE holds");
    addFile(*command, *path);
    command->footer("Example:\n  qorkes stream info lab.stream\n");
    command->callback([path] { writeOut(description(load(*path).get())); });
}

} // namespace

void addStream(CLI::App& app) {
    CLI::App* command = app.add_subcommand("stream", "Keep random streams in files");
    addSave(*command);
    addLoad(*command);
    addInfo(*command);
    command->require_subcommand(1);
    command->footer("Examples:\n"
                    "  qorkes stream save lab.stream --generator MT19937 --seed 7\n"
                    "  qorkes stream load lab.stream uniform --count 5 --update\n"
                    "  qorkes stream info lab.stream\n");
}

} // namespace qorkes
