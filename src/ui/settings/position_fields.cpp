#include "ui/settings/position_fields.h"

#include <QCoreApplication>

#include "ui/q_text.h"
#include "ui/settings/settings_form.h"

namespace veloran {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("veloran::PositionFields", text);
}

ControlName named(const PositionNames& names, const char* object, const QString& spoken) {
    return {names.objectPrefix + object, names.spokenPrefix + ' ' + spoken};
}

}  // namespace

PositionFields::PositionFields(const PositionNames& names)
    : latitude(
          makeField(named(names, "Latitude", tr("latitude")), names.latitudeHint, kCoordWidth)),
      longitude(
          makeField(named(names, "Longitude", tr("longitude")), names.longitudeHint, kCoordWidth)),
      grid(makeField(named(names, "Grid", tr("grid")), names.gridHint, kCoordWidth)),
      fromGrid(makeButton(named(names, "FromGrid", tr("from grid")), tr("From Grid"), 12)) {}

void PositionFields::fill(LatLon position) {
    latitude->setText(qText(coordField(position.lat)));
    longitude->setText(qText(coordField(position.lon)));
}

std::optional<LatLon> PositionFields::positionOfGrid() const {
    return readLocator(grid->text().toStdString());
}

}  // namespace veloran
