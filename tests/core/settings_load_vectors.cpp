#include <map>

#include "support/core_world.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

using boost::json::object;
using boost::json::value;

SettingValue settingFrom(const value& stored) {
    if (stored.is_bool()) return stored.as_bool();
    if (stored.is_string()) return std::string(stored.as_string());
    if (stored.is_int64()) return stored.as_int64();
    if (!stored.is_array()) return number(stored);
    const auto& list = stored.as_array();
    if (!list.empty() && list.front().is_string()) {
        std::vector<std::string> texts;
        for (const auto& element : list) texts.emplace_back(element.as_string());
        return texts;
    }
    std::vector<std::int64_t> integers;
    for (const auto& element : list) integers.push_back(element.as_int64());
    return integers;
}

template <class T>
value asJson(const std::set<T>& values) {
    boost::json::array array;
    for (const auto& element : values) array.emplace_back(element);
    return array;
}

object fieldsOf(const AppState& app) {
    return {{"obsLatitude", app.obsLatitude.get()},
            {"obsLongitude", app.obsLongitude.get()},
            {"obsAltitude", app.obsAltitude.get()},
            {"obsName", app.obsName.get()},
            {"gridLocator", app.gridLocator.get()},
            {"rigHost", app.rigHost.get()},
            {"rigPort", app.rigPort.get()},
            {"rigAutoConnect", app.rigAutoConnect.get()},
            {"dopplerUpdateHz", app.dopplerUpdateHz.get()},
            {"forceClassicRigctld", app.forceClassicRigctld.get()},
            {"satProtoRestPattern", rawValue(app.satProtoRestPattern)},
            {"minAutoTrackElevation", app.minAutoTrackElevation.get()},
            {"polarBearingLine", app.polarBearingLine.get()},
            {"obs2Enabled", app.obs2Enabled.get()},
            {"obs2Name", app.obs2Name.get()},
            {"obs2Latitude", app.obs2Latitude.get()},
            {"obs2Longitude", app.obs2Longitude.get()},
            {"timelineHoursVisible", app.timelineHoursVisible.get()},
            {"subscribedCategories", asJson(app.subscribedCategories.get())},
            {"selectedSatelliteIds", asJson(app.selectedSatelliteIds.get())}};
}

TEST(SettingsLoadVectors, StoredValuesBecomeFields) {
    const auto file = loadVectors("data/settings_load.json");
    forEachCase(file, "settings_load.json", "cases", [](const object& c) {
        expectKnownMembers(c, {"id", "note", "stored", "expected"}, "case");
        CoreWorld world;
        for (const auto& [key, stored] : c.at("stored").as_object()) {
            world.machine.settings.set(key, settingFrom(stored));
        }
        world.start();
        const object fields = fieldsOf(*world.app);
        for (const auto& [field, expected] : c.at("expected").as_object()) {
            SCOPED_TRACE(std::string(field));
            const auto* actual = fields.if_contains(field);
            ASSERT_TRUE(actual) << "nothing checks this field";
            if (expected.is_number()) {
                EXPECT_EQ(number(*actual), number(expected));
            } else {
                EXPECT_EQ(*actual, expected);
            }
        }
    });
}

}  // namespace
}  // namespace veloran::test
