// Generated parts of a document: what stands between its marker lines
//
//     <!-- begin NAME -->
//     <!-- end NAME -->
#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace qorkes {

/// Puts `text` (whole lines) between the markers of `name`; throws if the document
/// cannot be read or written or has no such markers.
inline void replaceSection(const std::string& path, const std::string& name,
                           const std::string& text) {
    std::ifstream in(path);
    std::stringstream whole;
    whole << in.rdbuf();
    std::string document = whole.str();

    const std::string begin = "<!-- begin " + name + " -->\n";
    const std::size_t from = document.find(begin);
    const std::size_t to = document.find("<!-- end " + name + " -->");
    if (from == std::string::npos || to == std::string::npos)
        throw std::runtime_error(path + " has no section '" + name + "'");
    document.replace(from + begin.size(), to - from - begin.size(), text);

    std::ofstream out(path);
    if (!(out << document).flush()) throw std::runtime_error("cannot write " + path);
}

} // namespace qorkes
