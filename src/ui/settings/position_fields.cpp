#include "ui/settings/position_fields.h"

#include <QCoreApplication>
#include <utility>

#include "ui/q_text.h"
#include "ui/settings/field_mark.h"
#include "ui/settings/settings_form.h"
#include "ui/settings/typed_values.h"
#include "ui/widgets/value_label.h"

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
      fromGrid(makeButton(named(names, "FromGrid", tr("from grid")), tr("From Grid"), 12)),
      latitudeNote_(markUnread(
          *latitude,
          [](std::string_view text) { return typedLatitude(text) || typedPosition(text); },
          tr("-90 to 90, such as 33.87 or 33.87 N"))),
      longitudeNote_(markUnread(
          *longitude,
          [](std::string_view text) { return typedLongitude(text) || typedPosition(text); },
          tr("-180 to 180, such as 84.34 W"))),
      gridNote_(markUnread(
          *grid, [](std::string_view text) { return text.empty() || readLocator(text); },
          tr("Such as EM73tu"))) {
    for (QLineEdit* field : {latitude, longitude}) shareOut(*field);
    actOnReturn(*grid, [button = fromGrid] { button->click(); });
}

/// Not at each key: "33.87, -8" is on its way to "33.87, -84.34".
void PositionFields::shareOut(QLineEdit& field) {
    const auto share = [this, &field] {
        if (const auto both = typedPosition(field.text().toStdString())) fill(*both);
    };
    auto isPasted = [before = QString()](const QString& text) mutable {
        const auto step = text.size() - std::exchange(before, text).size();
        return step != 1 && step != -1;
    };
    QObject::connect(&field, &QLineEdit::textChanged, &field,
                     [&field, share, isPasted](const QString& text) mutable {
                         if (isPasted(text) && field.isModified()) share();
                     });
    QObject::connect(&field, &QLineEdit::editingFinished, &field, share);
}

QWidget* PositionFields::latitudeRow() const {
    return inRow({latitude, latitudeNote_}, 6);
}

QWidget* PositionFields::longitudeRow() const {
    return inRow({longitude, longitudeNote_}, 6);
}

QWidget* PositionFields::gridRow() const {
    return inRow({grid, fromGrid, gridNote_}, 6);
}

void PositionFields::fill(LatLon position) {
    latitude->setText(qText(coordField(position.lat)));
    longitude->setText(qText(coordField(position.lon)));
}

std::optional<LatLon> PositionFields::positionOfGrid() const {
    return readLocator(grid->text().toStdString());
}

}  // namespace veloran
