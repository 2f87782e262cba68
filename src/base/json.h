#pragma once

#include <boost/json/value.hpp>
#include <optional>
#include <string_view>

namespace veloran {

/// The value of a whole JSON text (UTF-8, strict RFC 8259), or nothing when it is not one or nests
/// deeper, or holds more values, than any file of this program. Of equal keys in an object the last
/// one counts.
///
/// Every number is the double nearest to its digits (Boost.JSON's own conversion can be one bit
/// off); one too large for a double reads as infinity, which typed readers refuse.
std::optional<boost::json::value> parseJson(std::string_view text);

}  // namespace veloran
