#include "setting_properties.h"

#include "core/maidenhead.h"
#include "core/setting_limits.h"
#include "require.h"

namespace veloran::fuzz {

bool lies(double value, double lowest, double highest) {
    return value >= lowest && value <= highest;
}

void requireBearableSettings(const AppState& app) {
    require(lies(app.obsLatitude, kLowestLatitude, kLargestNumber), "latitude");
    require(lies(app.obsLongitude, kLowestLongitude, kLargestNumber), "longitude");
    require(lies(app.obsAltitude, -kLargestNumber, kLargestNumber), "altitude");
    require(app.rigPort >= 0 && app.rigPort <= kHighestPort, "port");
    require(readsAsLocator(app.gridLocator.get()), "locator");
}

}  // namespace veloran::fuzz
