#pragma once

#include <string>
#include <vector>

namespace veloran::test {

/// A file that a writer gives two contents in turn.
struct WrittenFile {
    std::string name;  ///< below the home directory
    std::string first;
    std::string second;
};

inline constexpr const char* kSettingsName = "config/settings.json";

/// The program's files in the sizes they have: a large group of elements, time stamps, channels,
/// imported sets.
inline std::vector<WrittenFile> writtenFiles() {
    return {{".veloran/tle/active.tle", std::string(900'000, 'a'), std::string(700'001, 'b')},
            {".veloran/tle/active.timestamp", "1795258779.25", "1795258780.5"},
            {".veloran/satnogs/44909.json", std::string(6'000, 'a'), std::string(9'001, 'b')},
            {".veloran/satnogs/44909.timestamp", "1795258779.25", "1795258780.5"},
            {".veloran/custom.tle", std::string(40'000, 'a'), std::string(30'001, 'b')}};
}

}  // namespace veloran::test
