#pragma once

#include <boost/json.hpp>
#include <string>
#include <vector>

#include "elements/tle_data.h"

namespace veloran::test {

/// How close the computed members of a record have to be; texts and all other numbers are exact.
struct RecordTolerance {
    double epochDays = 0;  ///< relative
    double bstar = 0;      ///< relative
};

/// Compares a record with every member that the golden one has.
void expectRecord(const TLEData& actual, const boost::json::object& expected,
                  RecordTolerance tolerance);
void expectRecords(const std::vector<TLEData>& actual, const boost::json::value& expected,
                   RecordTolerance tolerance);

std::string textOf(const boost::json::value& value);

/// A whole OMM record of the space station, to be changed by the test.
boost::json::object stationMessage();
std::string messages(std::initializer_list<boost::json::object> records);

/// Two sound lines of 69 characters.
inline constexpr const char* kLine1 =
    "1 25544U 98067A   26095.54791667  .00016717  00000-0  10270-3 0  9991";
inline constexpr const char* kLine2 =
    "2 25544  51.6412 208.9163 0006703  69.9862 290.2073 15.50073832560129";

/// `line` with the zero-based columns from `first` on replaced.
std::string withColumns(std::string line, std::size_t first, const std::string& field);

}  // namespace veloran::test
