#pragma once

#include <string>

namespace veloran {

/// The six-character locator of a position in degrees. A latitude under -90, a longitude under -180
/// or a value that is not finite stops the program; test what comes from outside.
std::string toMaidenhead(double lat, double lon);

/// Whether toMaidenhead can take the position.
bool canHaveLocator(double lat, double lon);

}  // namespace veloran
