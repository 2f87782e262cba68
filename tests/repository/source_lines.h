#pragma once

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <ostream>
#include <set>
#include <string>

namespace veloran::test {

/// One line of a text file of the repository, the file relative to its root.
struct SourceLine {
    std::filesystem::path file;
    std::size_t number = 0;
    std::string text;

    friend std::ostream& operator<<(std::ostream& out, const SourceLine& line) {
        return out << line.file.string() << ":" << line.number;
    }
};

/// Calls `visit` with every line of our own text files below `folder`; golden files are left out.
inline void forEachSourceLine(const std::string& folder,
                              const std::function<void(const SourceLine&)>& visit) {
    static const std::set<std::string> kTexts{".h",  ".cpp", ".txt", ".cmake",
                                              ".py", ".sh",  ".md",  ""};
    const std::filesystem::path root = VELORAN_SOURCE_DIR;
    for (auto entry = std::filesystem::recursive_directory_iterator(root / folder);
         entry != std::filesystem::recursive_directory_iterator(); ++entry) {
        if (entry->path() == root / "tests" / "vectors") entry.disable_recursion_pending();
        if (!entry->is_regular_file() || !kTexts.contains(entry->path().extension())) continue;
        std::ifstream file(entry->path());
        SourceLine line{.file = entry->path().lexically_relative(root), .number = 0, .text = {}};
        while (std::getline(file, line.text)) {
            ++line.number;
            visit(line);
        }
    }
}

}  // namespace veloran::test
