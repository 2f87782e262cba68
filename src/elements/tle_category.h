#pragma once

#include <string>

namespace veloran {

/// One download group.
struct TLECategory {
    std::string name;  ///< stable key: cache file name and `source` tag
    std::string url;
    std::string description;  ///< title shown to the user
    std::string section;      ///< heading in the browser
    bool isUserSource = false;
};

}  // namespace veloran
