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

/// A document with one of its sections marked out.
struct SectionedDocument {
    std::string text;
    std::size_t begin, size;
};

/// Throws if the document cannot be read or has no section `name`.
inline SectionedDocument documentWith(const std::string& path,
                                      const std::string& name) {
    std::ifstream in(path);
    std::stringstream whole;
    whole << in.rdbuf();
    const std::string text = whole.str();
    const std::string marker = "<!-- begin " + name + " -->\n";
    const std::size_t from = text.find(marker);
    const std::size_t to = text.find("<!-- end " + name + " -->");
    if (from == std::string::npos || to == std::string::npos)
        throw std::runtime_error(path + " has no section '" + name + "'");
    const std::size_t begin = from + marker.size();
    return {text, begin, to - begin};
}

/// The whole lines between the markers.
inline std::string sectionOf(const std::string& path, const std::string& name) {
    const SectionedDocument document = documentWith(path, name);
    return document.text.substr(document.begin, document.size);
}

inline void replaceSection(const std::string& path, const std::string& name,
                           const std::string& lines) {
    SectionedDocument document = documentWith(path, name);
    document.text.replace(document.begin, document.size, lines);
    std::ofstream out(path);
    if (!(out << document.text).flush())
        throw std::runtime_error("cannot write " + path);
}

} // namespace qorkes
