// The text of an element group: sets of two or three lines.

#include <cstddef>

#include "checks.h"
#include "element_properties.h"
#include "elements/custom_tle_store.h"
#include "elements/omm_parser.h"
#include "elements/tle_manager.h"
#include "elements/tle_parser.h"
#include "require.h"

namespace veloran::fuzz {

void checkElementText(std::string_view bytes) {
    const auto sets = TLEParser::parse(bytes);
    constexpr std::size_t kShortestSet = 2 * 69;
    require(sets.size() <= bytes.size() / kShortestSet, "a set takes two whole lines");
    for (const auto& set : sets) {
        const auto alone = TLEParser::parseTwoLines(set.name, set.line1, set.line2);
        require(alone && isSame(*alone, set), "a set of a text reads alike by itself");
    }
    requireSoundSets(sets);
    require(areSame(TLEParser::parse(customFileText(sets)), sets),
            "sets that are written read back the same");
    const auto messages = OMMParser::parse(bytes);
    require(areSame(TLEManager::parseAuto(bytes), messages.empty() ? sets : messages),
            "an answer reads as messages or as lines");
}

}  // namespace veloran::fuzz
