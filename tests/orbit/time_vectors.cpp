#include "base/calendar.h"
#include "golden_orbits.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/time.json";

boost::json::object timeFile() {
    return loadVectors(kFile);
}

double tolerance(const boost::json::object& file, const char* name) {
    return number(file.at("tolerance").at(name));
}

TEST(TimeVectors, Jday) {
    const auto file = timeFile();
    expectKnownMembers(file,
                       {"about", "tolerance", "jday", "from_seconds", "gmst_table",
                        "minutes_since_epoch", "from_jday"},
                       kFile);
    expectKnownMembers(file.at("tolerance").as_object(),
                       {"jd", "jdFrac", "jdFrac_whole_or_binary_seconds", "gmst", "gmst_table",
                        "minutes", "nanosecond", "from_jday_seconds", "why"},
                       kFile);
    forEachCase(file, kFile, "jday", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"date", "jd", "jdFrac"}, kFile);
        const auto& date = c.at("date").as_array();
        const auto part = [&](std::size_t i) { return date.at(i).to_number<std::int64_t>(); };
        const JulianDate julian =
            jday(part(0), part(1), part(2), part(3), part(4), number(date.at(5)));
        EXPECT_NEAR(julian.jd, number(c.at("jd")), tolerance(file, "jd")) << "jd";
        EXPECT_NEAR(julian.jdFrac, number(c.at("jdFrac")), tolerance(file, "jdFrac")) << "jdFrac";
    });
}

TEST(TimeVectors, FromSeconds) {
    const auto file = timeFile();
    forEachCase(file, kFile, "from_seconds", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"seconds", "parts", "jd", "jdFrac", "gmst"}, kFile);
        SCOPED_TRACE(traceOf(c));
        const Instant at = instant(c.at("seconds"));
        const auto& parts = c.at("parts").as_array();
        const auto part = [&](std::size_t i) { return parts.at(i).to_number<std::int64_t>(); };
        const CivilTime civil = civilTime(at);
        EXPECT_EQ(civil.year, part(0));
        EXPECT_EQ(civil.month, part(1));
        EXPECT_EQ(civil.day, part(2));
        EXPECT_EQ(civil.hour, part(3));
        EXPECT_EQ(civil.minute, part(4));
        EXPECT_EQ(civil.second, part(5));
        EXPECT_LE(std::abs(civil.nanosecond - part(6)),
                  file.at("tolerance").at("nanosecond").to_number<std::int64_t>())
            << "nanosecond";

        const JulianDate julian = jdayFromDate(at);
        const bool binarySeconds = part(6) % 125000000 == 0;
        EXPECT_NEAR(julian.jd, number(c.at("jd")), tolerance(file, "jd")) << "jd";
        EXPECT_NEAR(julian.jdFrac, number(c.at("jdFrac")),
                    tolerance(file, binarySeconds ? "jdFrac_whole_or_binary_seconds" : "jdFrac"))
            << "jdFrac";
        // A nanosecond may turn the rounding of the sum by one step of 3e-9 rad.
        EXPECT_NEAR(gstime(julian.jd + julian.jdFrac), number(c.at("gmst")),
                    binarySeconds ? tolerance(file, "gmst") : 4e-9)
            << "gmst";
    });
}

TEST(TimeVectors, GmstTable) {
    const auto file = timeFile();
    forEachCase(file, kFile, "gmst_table", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"jd", "gmst"}, kFile);
        EXPECT_NEAR(gstime(number(c.at("jd"))), number(c.at("gmst")), tolerance(file, "gmst_table"))
            << "gmst";
    });
}

TEST(TimeVectors, MinutesSinceEpoch) {
    const auto file = timeFile();
    forEachCase(file, kFile, "minutes_since_epoch", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "seconds", "minutes"}, kFile);
        SCOPED_TRACE(traceOf(c));
        EXPECT_NEAR(minutesSinceEpoch(*goldenSatRec(c.at("id")), instant(c.at("seconds"))),
                    number(c.at("minutes")), tolerance(file, "minutes"))
            << "minutes";
    });
}

TEST(TimeVectors, FromJday) {
    const auto file = timeFile();
    forEachCase(file, kFile, "from_jday", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"jd", "jdFrac", "seconds"}, kFile);
        const Instant at = dateFromJday(number(c.at("jd")), number(c.at("jdFrac")));
        EXPECT_NEAR(at.secondsSinceReference, number(c.at("seconds")),
                    tolerance(file, "from_jday_seconds"))
            << "seconds";
    });
}

}  // namespace
}  // namespace veloran::test
