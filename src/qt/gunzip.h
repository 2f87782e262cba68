#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace veloran {

/// What was packed with gzip (RFC 1952, one or several members). Absent when it is not whole, its
/// checksum is wrong, anything follows it, or it grows beyond `largest` bytes.
std::optional<std::string> gunzipped(std::string_view packed, std::size_t largest);

}  // namespace veloran
