#include "run.hpp"

#include <cstdio>
#include <memory>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qorkes {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File temporary(const std::string& text) {
    File file(std::tmpfile(), std::fclose);
    std::fwrite(text.data(), 1, text.size(), file.get());
    std::rewind(file.get());
    return file;
}

std::string contents(const File& file) {
    std::rewind(file.get());
    std::string text;
    for (int c; (c = std::fgetc(file.get())) != EOF;) text += static_cast<char>(c);
    return text;
}

} // namespace

Outcome run(const std::vector<std::string>& arguments, const std::string& input) {
    const File files[] = {temporary(input), temporary(""), temporary("")};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (int stream = 0; stream < 3; ++stream)
        posix_spawn_file_actions_adddup2(&actions, fileno(files[stream].get()), stream);

    std::vector<char*> words{const_cast<char*>(QORKES_PROGRAM)};
    for (const auto& word : arguments) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    pid_t child;
    int status = -1;
    if (posix_spawn(&child, QORKES_PROGRAM, &actions, nullptr, words.data(), environ) ==
        0)
        waitpid(child, &status, 0);
    posix_spawn_file_actions_destroy(&actions);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(files[1]),
            contents(files[2])};
}

TemporaryFile::TemporaryFile(const std::string& text)
    : path(testing::TempDir() + "qorkes-XXXXXX") {
    const int descriptor = mkstemp(path.data());
    EXPECT_EQ(write(descriptor, text.data(), text.size()),
              static_cast<ssize_t>(text.size()));
    close(descriptor);
}

TemporaryFile::~TemporaryFile() { std::remove(path.c_str()); }

void expectRefusal(const Outcome& outcome, const std::vector<std::string>& words) {
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.rfind("qorkes: ", 0), 0u) << outcome.err;
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
    for (const auto& word : words)
        EXPECT_NE(outcome.err.find(word), std::string::npos) << word << "\n"
                                                             << outcome.err;
}

} // namespace qorkes
