#pragma once

class QLineEdit;

namespace veloran {

/// Drops the line ends, tabs and other control characters that a paste brings along: the field does
/// not show them, and with them neither a number nor an address reads.
void keepToOneLine(QLineEdit& field);

}  // namespace veloran
