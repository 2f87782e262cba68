#include "core/satellite_preferences.h"
#include "golden_transmitters.h"
#include "support/simulated_machine.h"
#include "support/vectors.h"

namespace veloran::test {
namespace {

using boost::json::object;

void checkPreferred(const object& c) {
    const auto transmitters = goldenTransmitters(c.at("transmitters"));
    const auto chosen = preferredTransmitter(transmitters, number(c.at("lastHz")));
    const auto& expected = c.at("expected");
    ASSERT_EQ(chosen.has_value(), !expected.is_null());
    if (chosen) {
        EXPECT_EQ(chosen->id, transmitters.at(static_cast<std::size_t>(expected.as_int64())).id);
    }
}

void checkOffset(const object& c) {
    MemorySettings settings;
    for (const auto& [key, value] : c.at("store").as_object()) settings.set(key, number(value));
    const CalibrationOffsetStore store(settings);
    EXPECT_EQ(store.transponderOffset(c.at("noradId").as_int64(), number(c.at("centerHz"))),
              number(c.at("expected")));
}

void checkColor(const object& c) {
    const std::int64_t id = c.at("noradId").as_int64();
    EXPECT_EQ(static_cast<std::int64_t>(SatelliteColorPalette::index(id)),
              c.at("expected").as_int64());
    const RgbColor color = SatelliteColorPalette::color(id);
    const auto& rgb = c.at("rgb").as_array();
    EXPECT_EQ(color.red, number(rgb.at(0)));
    EXPECT_EQ(color.green, number(rgb.at(1)));
    EXPECT_EQ(color.blue, number(rgb.at(2)));
}

TEST(PreferencesVectors, ChannelsKeysOffsetsAndColors) {
    const auto file = loadVectors("data/preferences.json");
    forEachCase(file, "preferences.json", "cases", [](const object& c) {
        expectKnownMembers(c,
                           {"id", "note", "function", "transmitters", "lastHz", "noradId",
                            "centerHz", "store", "rgb", "expected"},
                           "case");
        const std::string_view function = c.at("function").as_string();
        const auto id = [&c] { return c.at("noradId").as_int64(); };
        const auto expectKey = [&c](const std::string& key) {
            EXPECT_EQ(key, std::string_view(c.at("expected").as_string()));
        };
        if (function == "preferredTransmitter") {
            checkPreferred(c);
        } else if (function == "calibrationKey") {
            expectKey(CalibrationOffsetStore::key(id(), number(c.at("centerHz"))));
        } else if (function == "legacyCalibrationKey") {
            expectKey(CalibrationOffsetStore::legacyKey(id()));
        } else if (function == "lastTransmitterKey") {
            expectKey(SatellitePreferences::lastTxKey(id()));
        } else if (function == "transponderOffset") {
            checkOffset(c);
        } else if (function == "colorIndex") {
            checkColor(c);
        } else {
            ADD_FAILURE() << "nothing checks the function " << function;
        }
    });
}

}  // namespace
}  // namespace veloran::test
