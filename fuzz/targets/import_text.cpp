// What the user pastes or opens: lines, or JSON with lines.

#include <map>
#include <string>

#include "base/text.h"
#include "checks.h"
#include "element_properties.h"
#include "elements/custom_tle_store.h"
#include "elements/element_merge.h"
#include "require.h"
#include "support/simulated_machine.h"

namespace veloran::fuzz {

namespace {

bool isLine(std::string_view text, std::string_view start) {
    return text.starts_with(start) && trimmed(text, Blanks::horizontal) == text;
}

/// JSON may hold lines and names that the file of lines cannot tell apart.
bool canBeTold(const TLEData& set) {
    return isLine(set.line1, "1 ") && isLine(set.line2, "2 ") && isLine(set.name, "") &&
           !set.name.empty() && !set.name.starts_with("1 ") && !set.name.starts_with("2 ");
}

bool holds(const std::vector<TLEData>& list, const TLEData& wanted) {
    for (const auto& set : list) {
        if (isSame(set, wanted)) return true;
    }
    return false;
}

}  // namespace

void checkImportText(std::string_view bytes) {
    const auto decoded = decodeImport(bytes);
    require(decoded.error.has_value() == decoded.sets.empty(), "an import gives sets or an error");
    requireSoundSets(decoded.sets);

    test::MemoryFiles files;
    CustomTLEStore store(files);
    const auto result = store.importFromText(bytes);
    require(result.error == decoded.error, "the store tells the error of the text");
    require(!importMessage(result.count, result.error).text.empty(), "an import has a message");
    if (result.error) {
        require(files.files.empty(), "an import that failed stores nothing");
        return;
    }
    std::map<std::int64_t, TLEData> latest;
    for (const auto& set : decoded.sets) latest.insert_or_assign(set.noradId, set);
    require(result.count == static_cast<std::int64_t>(latest.size()), "new numbers are counted");

    const auto stored = store.load();
    bool allCanBeTold = true;
    for (const auto& [id, set] : latest) {
        allCanBeTold = allCanBeTold && canBeTold(set);
        require(!canBeTold(set) || holds(stored, set), "an imported set is stored as it was");
    }
    for (const auto& set : stored) require(set.source == kCustomSource, "stored sets say so");
    if (!allCanBeTold) return;
    require(stored.size() == latest.size(), "nothing else is stored");
    const auto file = files.files;
    require(store.importFromText(customFileText(stored)).count == 0, "nothing is new twice");
    require(files.files == file, "an import of what is stored changes nothing");
    for (const auto& [id, set] : latest) store.remove(id);
    require(store.load().empty(), "what is removed is gone");
}

}  // namespace veloran::fuzz
