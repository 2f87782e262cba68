#pragma once

#include <span>

namespace veloran {

/// One group that the element service offers.
struct BuiltinGroup {
    const char* key;
    const char* groupWord;  ///< what the service calls it
    const char* description;
    const char* section;
};

/// In the order in which the browser shows them.
std::span<const BuiltinGroup> builtinGroups();

}  // namespace veloran
