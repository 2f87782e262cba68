#include "ui/quick_list/preset_selections.h"

#include <algorithm>
#include <iterator>

#include "ui/browser/browser_lists.h"

namespace veloran {

void selectAll(AppState& state) {
    state.toggleSatellites(withOtherSelection(state.satellites, true));
}

void selectByCategory(AppState& state, std::string_view) {
    std::vector<SatellitePtr> changed;
    std::ranges::copy_if(*state.satellites, std::back_inserter(changed), [](const SatellitePtr& s) {
        return s->isSelected.get() == s->transmitters.empty();
    });
    state.toggleSatellites(changed);
}

}  // namespace veloran
