#include "picture.hpp"

#include "failure.hpp"
#include "files.hpp"
#include "histogram.hpp"
#include "text.hpp"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qorkes {
namespace {

using catalogue::Distribution;

[[noreturn]] void failHere(const std::string& what) {
    fail(what + " (" + std::strerror(errno) + ")", statusOfOutputTrouble);
}

File temporaryFile(const std::string& text) {
    File file(std::tmpfile());
    if (!file || !writeWhole(file.get(), text))
        failHere("--picture: a temporary file cannot be written");
    std::rewind(file.get());
    return file;
}

/// What gnuplot makes of a script.
std::string plotted(const std::string& script) {
    const File input = temporaryFile(script), output = temporaryFile("");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, fileno(input.get()), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fileno(output.get()), STDOUT_FILENO);
    char name[] = "gnuplot";
    char* arguments[] = {name, nullptr};
    pid_t child;
    errno = posix_spawnp(&child, name, &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    if (errno == ENOENT)
        fail("--picture: gnuplot draws the picture and is not installed (Debian: "
             "apt install gnuplot-nox)",
             statusOfOutputTrouble);
    if (errno != 0) failHere("--picture: gnuplot cannot be run");
    int status;
    waitpid(child, &status, 0);
    if (status != 0) fail("--picture: gnuplot failed", statusOfOutputTrouble);
    std::rewind(output.get());
    return readRest(output.get());
}

/// "x y" a line, for gnuplot; values that are not finite leave a gap.
std::string point(double x, double y) {
    return shortest(x) + ' ' + (std::isfinite(y) ? shortest(y) : "NaN") + '\n';
}

std::string titleOf(const Panel& panel) {
    const Distribution& distribution = panel.distribution;
    std::string text = panel.caption + distribution.name;
    for (size_t i = 0; i < distribution.parameters.size(); ++i)
        text += std::string(" ") + distribution.parameters[i].name + '=' +
                shortest(panel.parameters[i]);
    return text + ", " + std::to_string(panel.sample.size()) + " numbers";
}

/// A curve for a density, points for probabilities of whole numbers.
std::string exactPoints(const Histogram& histogram, const Distribution& distribution,
                        const double* parameters, double unit, double middle) {
    std::string text;
    if (!distribution.density) {
        for (const auto& bin : histogram.bins)
            text += point(bin.low + middle, bin.expected / unit);
        return text;
    }
    constexpr int points = 1000;
    const double low = histogram.bins.front().low;
    const double range = histogram.bins.back().low + histogram.width - low;
    for (int i = 0; i <= points; ++i) {
        const double x = low + range * i / points;
        text += point(x, distribution.density(x, parameters));
    }
    return text;
}

std::string scriptFor(const Panel& panel) {
    constexpr int mostBins = 60;
    const Distribution& distribution = panel.distribution;
    const double* parameters = panel.parameters.data();
    const Histogram histogram =
        histogramOf(panel.sample, distribution, parameters, mostBins);
    if (histogram.bins.empty())
        fail("--picture: a histogram needs numbers that differ; ask for more by "
             "--count");
    const bool isReal = distribution.doubles != nullptr;
    const double unit = static_cast<double>(panel.sample.size()) * histogram.width;
    const double middle = (histogram.width - (isReal ? 0 : 1)) / 2;
    std::string bars;
    for (const auto& bin : histogram.bins)
        bars += point(bin.low + middle, bin.count / unit);

    std::string script = "set title '" + titleOf(panel) +
                         "'\n"
                         "set style fill solid 0.4 border -1\n"
                         "set boxwidth " +
                         shortest(histogram.width * (isReal ? 1 : 0.8)) +
                         "\n"
                         "set xlabel 'x'\nset ylabel '" +
                         (isReal ? "density" : "probability") +
                         "'\n"
                         "$drawn << END\n" +
                         bars + "END\n";
    std::string plot = "plot [][0:] $drawn with boxes title 'drawn'";
    if (distribution.density || distribution.probability) {
        script += "$exact << END\n" +
                  exactPoints(histogram, distribution, parameters, unit, middle) +
                  "END\n";
        plot += std::string(", $exact with ") +
                (distribution.density ? "lines" : "points pointtype 7 pointsize 0.6") +
                " linecolor 'black' title 'exact'";
    }
    return script + plot + '\n';
}

std::string scriptFor(const std::vector<Panel>& panels) {
    const std::string count = std::to_string(panels.size());
    std::string script = "set terminal svg noenhanced size 720," + count +
                         "*400 font 'sans,12' background 'white'\n"
                         "set multiplot layout " +
                         count + ",1\n";
    for (const Panel& panel : panels) script += scriptFor(panel);
    return script;
}

} // namespace

void checkPicture(const std::string& path) {
    if (!path.ends_with(".svg"))
        fail("--picture: '" + path + "' must end in .svg, which is what is drawn");
}

void writePicture(const std::string& path, const std::vector<Panel>& panels) {
    const std::string picture = plotted(scriptFor(panels));
    const File file(std::fopen(path.c_str(), "wb"));
    if (!file || !writeWhole(file.get(), picture))
        failHere(path + ": cannot be written");
}

} // namespace qorkes
