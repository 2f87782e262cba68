#pragma once

#include <optional>

#include "core/maidenhead.h"
#include "ui/settings/form_section.h"

class QLineEdit;

namespace veloran {

class ValueLabel;

/// How the fields of one site are called.
struct PositionNames {
    QString objectPrefix;  ///< "obs" makes "obsLatitude", "obsLongitude", "obsGrid", "obsFromGrid"
    QString spokenPrefix;
    QString latitudeHint;
    QString longitudeHint;
    QString gridHint;
};

/// The fields of a position, and the button that takes it from a locator. A text with both
/// coordinates is shared out between the fields when it is pasted, or typed to its end. A field
/// that does not read is marked.
struct PositionFields {
    explicit PositionFields(const PositionNames& names);
    PositionFields(const PositionFields&) = delete;

    /// One beside the other; then what is wrong with the field.
    QWidget* latitudeRow() const;
    QWidget* longitudeRow() const;
    QWidget* gridRow() const;

    /// Shows the position in both fields.
    void fill(LatLon position);
    /// What the locator says, if it is one.
    std::optional<LatLon> positionOfGrid() const;

    QLineEdit* latitude;
    QLineEdit* longitude;
    QLineEdit* grid;
    QPushButton* fromGrid;

  private:
    void shareOut(QLineEdit& field);

    ValueLabel* latitudeNote_;
    ValueLabel* longitudeNote_;
    ValueLabel* gridNote_;
};

}  // namespace veloran
