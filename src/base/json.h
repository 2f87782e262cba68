#pragma once

#include <boost/json/value.hpp>
#include <cstddef>
#include <optional>
#include <string_view>

namespace veloran {

/// Members of one object. Boost's table slows down with the square of their number for keys that
/// were chosen to collide; a record of the services has two dozen.
inline constexpr std::size_t kMostMembers = 1024;

/// The value of a whole JSON text (UTF-8, strict RFC 8259), or nothing when it is not one, or nests
/// deeper, holds more values, or has objects of more members than any file of this program. Of
/// equal keys in an object the last one counts.
///
/// Every number is the double nearest to its digits (Boost.JSON's own conversion can be one bit
/// off); one too large for a double reads as infinity, which typed readers refuse.
std::optional<boost::json::value> parseJson(std::string_view text,
                                            std::size_t mostMembers = kMostMembers);

}  // namespace veloran
