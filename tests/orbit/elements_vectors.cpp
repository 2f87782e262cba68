#include <algorithm>
#include <array>
#include <string_view>

#include "golden_orbits.h"
#include "orbit/constants.h"
#include "orbit/sgp4.h"

namespace veloran::test {
namespace {

constexpr const char* kFile = "orbit/elements.json";

struct RecField {
    std::string_view name;
    double SatRec::*member;
};

// Sums and quotients, to a relative tolerance; what is told as 0 is 0.
constexpr std::array kConstants{
    RecField{"no_kozai", &SatRec::no_kozai},
    RecField{"no_unkozai", &SatRec::no_unkozai},
    RecField{"alta", &SatRec::alta},
    RecField{"altp", &SatRec::altp},
    RecField{"con41", &SatRec::con41},
    RecField{"x1mth2", &SatRec::x1mth2},
    RecField{"x7thm1", &SatRec::x7thm1},
    RecField{"aycof", &SatRec::aycof},
    RecField{"xlcof", &SatRec::xlcof},
    RecField{"eta", &SatRec::eta},
    RecField{"cc1", &SatRec::cc1},
    RecField{"cc4", &SatRec::cc4},
    RecField{"cc5", &SatRec::cc5},
    RecField{"d2", &SatRec::d2},
    RecField{"d3", &SatRec::d3},
    RecField{"d4", &SatRec::d4},
    RecField{"delmo", &SatRec::delmo},
    RecField{"sinmao", &SatRec::sinmao},
    RecField{"mdot", &SatRec::mdot},
    RecField{"argpdot", &SatRec::argpdot},
    RecField{"nodedot", &SatRec::nodedot},
    RecField{"omgcof", &SatRec::omgcof},
    RecField{"xmcof", &SatRec::xmcof},
    RecField{"nodecf", &SatRec::nodecf},
    RecField{"t2cof", &SatRec::t2cof},
    RecField{"t3cof", &SatRec::t3cof},
    RecField{"t4cof", &SatRec::t4cof},
    RecField{"t5cof", &SatRec::t5cof},
    RecField{"gsto", &SatRec::gsto},
    RecField{"xni", &SatRec::xni},
};

bool isAmong(const boost::json::array& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const auto& entry) { return entry.as_string() == name; });
}

void expectConstant(double actual, double expected, double relative, double absolute,
                    std::string_view name) {
    if (expected == 0.0) {
        EXPECT_EQ(actual, 0.0) << name;
        return;
    }
    EXPECT_NEAR(actual, expected, relative * std::abs(expected) + absolute) << name;
}

void expectInit(const SatRec& satrec, const boost::json::object& init,
                const boost::json::object& tolerance) {
    const double relative = number(tolerance.at("init_relative"));
    const double absolute = number(tolerance.at("init_absolute"));
    const auto& absoluteNames = tolerance.at("init_absolute_applies_to").as_array();
    for (const auto& member : init) {
        const std::string_view name = member.key();
        const auto& value = member.value();
        if (name == "jdsatepoch") {
            EXPECT_NEAR(satrec.jdsatepoch, number(value), number(tolerance.at("jdsatepoch")));
        } else if (name == "jdsatepochF") {
            EXPECT_NEAR(satrec.jdsatepochF, number(value), number(tolerance.at("jdsatepochF")));
        } else if (name == "isimp") {
            EXPECT_EQ(satrec.isimp, value.to_number<std::int64_t>()) << name;
        } else if (name == "error") {
            EXPECT_EQ(satrec.error, value.to_number<std::int64_t>()) << name;
        } else if (name == "method") {
            EXPECT_EQ(std::string(1, satrec.method), value.as_string()) << name;
        } else {
            const auto* field = std::find_if(kConstants.begin(), kConstants.end(),
                                             [&](const RecField& f) { return f.name == name; });
            ASSERT_NE(field, kConstants.end()) << "nothing checks the constant " << name;
            expectConstant(satrec.*(field->member), number(value), relative,
                           isAmong(absoluteNames, name) ? absolute : 0.0, name);
        }
    }
}

void expectElements(const TLEData& actual, const boost::json::object& set, double relative) {
    const auto expectClose = [&](double value, const char* name) {
        EXPECT_TRUE(closeTo(value, number(set.at(name)), relative)) << name;
    };
    EXPECT_EQ(actual.noradId, set.at("noradId").to_number<std::int64_t>());
    EXPECT_EQ(actual.epochYear, set.at("epochYear").to_number<std::int64_t>());
    EXPECT_EQ(actual.revNumber, set.at("revNumber").to_number<std::int64_t>());
    expectClose(actual.epochDays, "epochDays");
    expectClose(actual.bstar, "bstar");
    expectClose(actual.inclination, "inclination");
    expectClose(actual.raan, "raan");
    expectClose(actual.eccentricity, "eccentricity");
    expectClose(actual.argPerigee, "argPerigee");
    expectClose(actual.meanAnomaly, "meanAnomaly");
    expectClose(actual.meanMotion, "meanMotion");
}

TEST(ElementsVectors, Constants) {
    const auto file = loadVectors(kFile);
    expectKnownMembers(file, {"about", "tolerance", "constants", "sets", "irregular"}, kFile);
    const std::vector<std::pair<std::string_view, double>> ours{
        {"radiusEarthKm", WGS84::radiusEarthKm},
        {"mu", WGS84::mu},
        {"j2", WGS84::j2},
        {"j3", WGS84::j3},
        {"j4", WGS84::j4},
        {"xke", WGS84::xke},
        {"tumin", WGS84::tumin},
        {"j3oj2", WGS84::j3oj2},
        {"flattening", WGS84::flattening},
        {"e2", WGS84::e2},
    };
    EXPECT_EQ(file.at("constants").as_object().size(), ours.size());
    for (const auto& [name, value] : ours) {
        EXPECT_EQ(value, number(file.at("constants").at(name))) << name;
    }
}

TEST(ElementsVectors, LinesToElements) {
    const auto file = loadVectors(kFile);
    const double relative = number(file.at("tolerance").at("elements_relative"));
    forEachCase(file, kFile, "sets", [&](const boost::json::object& set) {
        SCOPED_TRACE(traceOf(set));
        const auto parsed = TLEParser::parseTwoLines(set.at("name").as_string().c_str(),
                                                     set.at("line1").as_string().c_str(),
                                                     set.at("line2").as_string().c_str());
        ASSERT_TRUE(parsed);
        EXPECT_EQ(parsed->name, set.at("name").as_string());
        expectElements(*parsed, set, relative);
        const auto epoch = parsed->epochDate();
        ASSERT_TRUE(epoch);
        EXPECT_NEAR(epoch->secondsSinceReference, number(set.at("epochSeconds")),
                    number(file.at("tolerance").at("epochSeconds")));
    });
}

TEST(ElementsVectors, Initialisation) {
    const auto file = loadVectors(kFile);
    const auto& tolerance = file.at("tolerance").as_object();
    expectKnownMembers(tolerance,
                       {"init_relative", "init_absolute", "init_absolute_applies_to",
                        "epochSeconds", "jdsatepoch", "jdsatepochF", "elements_relative", "why"},
                       kFile);
    forEachCase(file, kFile, "sets", [&](const boost::json::object& set) {
        expectKnownMembers(
            set,
            {"id", "category", "name", "noradId", "line1", "line2", "epochYear", "epochDays",
             "bstar", "inclination", "raan", "eccentricity", "argPerigee", "meanAnomaly",
             "meanMotion", "revNumber", "epochSeconds", "init", "periodMin"},
            kFile);
        SCOPED_TRACE(traceOf(set));
        const SatRec satrec = TLEParser::createSatRec(elementsOf(set));
        EXPECT_TRUE(satrec.initDone);
        expectInit(satrec, set.at("init").as_object(), tolerance);
        EXPECT_TRUE(closeTo(twoPi / satrec.no_unkozai, number(set.at("periodMin")),
                            number(tolerance.at("init_relative"))))
            << "periodMin";
    });
}

TEST(ElementsVectors, IrregularRecords) {
    const auto file = loadVectors(kFile);
    forEachCase(file, kFile, "irregular", [&](const boost::json::object& c) {
        expectKnownMembers(c,
                           {"note", "noradId", "epochYear", "epochDays", "bstar", "inclination",
                            "raan", "eccentricity", "argPerigee", "meanAnomaly", "meanMotion",
                            "revNumber", "initDone", "error", "isimp", "errorAtZero", "errorAt100"},
                           kFile);
        SCOPED_TRACE(traceOf(c));
        SatRec satrec = TLEParser::createSatRec(elementsOf(c));
        EXPECT_EQ(satrec.initDone, c.at("initDone").as_bool());
        EXPECT_EQ(satrec.error, c.at("error").to_number<std::int64_t>());
        EXPECT_EQ(satrec.isimp, c.at("isimp").to_number<std::int64_t>());
        EXPECT_FALSE(sgp4(satrec, 0.0));
        EXPECT_EQ(satrec.error, c.at("errorAtZero").to_number<std::int64_t>());
        EXPECT_FALSE(sgp4(satrec, 100.0));
        EXPECT_EQ(satrec.error, c.at("errorAt100").to_number<std::int64_t>());
    });
}

}  // namespace
}  // namespace veloran::test
