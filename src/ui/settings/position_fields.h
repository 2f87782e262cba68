#pragma once

#include <optional>

#include "core/maidenhead.h"
#include "ui/settings/form_section.h"

class QLineEdit;

namespace veloran {

/// How the fields of one site are called.
struct PositionNames {
    QString objectPrefix;  ///< "obs" makes "obsLatitude", "obsLongitude", "obsGrid", "obsFromGrid"
    QString spokenPrefix;
    QString latitudeHint;
    QString longitudeHint;
    QString gridHint;
};

/// The fields of a position, and the button that takes it from a locator.
struct PositionFields {
    explicit PositionFields(const PositionNames& names);

    /// Shows the position in both fields.
    void fill(LatLon position);
    /// What the locator says, if it is one.
    std::optional<LatLon> positionOfGrid() const;

    QLineEdit* latitude;
    QLineEdit* longitude;
    QLineEdit* grid;
    QPushButton* fromGrid;
};

}  // namespace veloran
