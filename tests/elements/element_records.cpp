#include "elements/element_records.h"

#include <gtest/gtest.h>

#include "support/vectors.h"

namespace veloran::test {

std::string textOf(const boost::json::value& value) {
    return std::string(value.as_string());
}

void expectRecord(const TLEData& actual, const boost::json::object& expected,
                  RecordTolerance tolerance) {
    const std::string where = "record " + actual.name;
    expectKnownMembers(
        expected,
        {"name", "noradId", "line1", "line2", "epochYear", "epochDays", "bstar", "inclination",
         "raan", "eccentricity", "argPerigee", "meanAnomaly", "meanMotion", "revNumber", "source"},
        where);
    const auto expectText = [&](const char* field, const std::string& value) {
        EXPECT_EQ(value, textOf(expected.at(field))) << where << ", field " << field;
    };
    const auto expectNumber = [&](const char* field, double value, double relative = 0) {
        EXPECT_TRUE(closeTo(value, number(expected.at(field)), relative))
            << where << ", field " << field;
    };
    const auto expectInteger = [&](const char* field, std::int64_t value) {
        EXPECT_EQ(value, expected.at(field).to_number<std::int64_t>())
            << where << ", field " << field;
    };
    expectText("name", actual.name);
    expectInteger("noradId", actual.noradId);
    expectText("line1", actual.line1);
    expectText("line2", actual.line2);
    expectInteger("epochYear", actual.epochYear);
    expectNumber("epochDays", actual.epochDays, tolerance.epochDays);
    expectNumber("bstar", actual.bstar, tolerance.bstar);
    expectNumber("inclination", actual.inclination);
    expectNumber("raan", actual.raan);
    expectNumber("eccentricity", actual.eccentricity);
    expectNumber("argPerigee", actual.argPerigee);
    expectNumber("meanAnomaly", actual.meanAnomaly);
    expectNumber("meanMotion", actual.meanMotion);
    expectInteger("revNumber", actual.revNumber);
    expectText("source", actual.source);
}

void expectRecords(const std::vector<TLEData>& actual, const boost::json::value& expected,
                   RecordTolerance tolerance) {
    const auto& records = expected.as_array();
    ASSERT_EQ(actual.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        expectRecord(actual[i], records[i].as_object(), tolerance);
    }
}

boost::json::object stationMessage() {
    return {{"OBJECT_NAME", "ISS (ZARYA)"},
            {"OBJECT_ID", "1998-067A"},
            {"EPOCH", "2026-04-05T13:09:00.000288"},
            {"MEAN_MOTION", 15.50073832},
            {"ECCENTRICITY", 0.0006703},
            {"INCLINATION", 51.6412},
            {"RA_OF_ASC_NODE", 208.9163},
            {"ARG_OF_PERICENTER", 69.9862},
            {"MEAN_ANOMALY", 290.2073},
            {"EPHEMERIS_TYPE", 0},
            {"CLASSIFICATION_TYPE", "U"},
            {"NORAD_CAT_ID", 25544},
            {"ELEMENT_SET_NO", 999},
            {"REV_AT_EPOCH", 56012},
            {"BSTAR", 0.0001027},
            {"MEAN_MOTION_DOT", 0.00016717},
            {"MEAN_MOTION_DDOT", 0}};
}

std::string messages(std::initializer_list<boost::json::object> records) {
    boost::json::array array;
    for (const auto& record : records) array.push_back(record);
    return boost::json::serialize(array);
}

std::string withColumns(std::string line, std::size_t first, const std::string& field) {
    return line.replace(first, field.size(), field);
}

}  // namespace veloran::test
