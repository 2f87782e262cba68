#include "ui/settings/observer_section.h"

#include <QLabel>
#include <QPointer>

#include "ui/q_text.h"
#include "ui/settings/field_mark.h"
#include "ui/settings/typed_values.h"
#include "ui/widgets/value_label.h"

namespace veloran {

ObserverSection::ObserverSection(std::shared_ptr<AppState> state)
    : FormSection(std::move(state), tr("Observer Location")),
      position_({"obs", tr("Observer"), "33.87", "-84.34", "EM73"}),
      altitude_(makeField({"obsAltitude", tr("Observer altitude")}, "300", kCoordWidth)) {
    auto* locate = makeButton({"useMyLocation", tr("Use My Location")}, tr("Use My Location"), 12);
    addRow(
        tr("Name"),
        inRow({boundField({"obsName", tr("Observer name")}, tr("Home"), &AppState::obsName)}, 0));
    auto* altitudeNote = markUnread(
        *altitude_, [](std::string_view text) { return typedAltitude(text).has_value(); },
        tr("Metres, such as 300"));
    addRow(tr("Latitude"), position_.latitudeRow());
    addRow(tr("Longitude"), position_.longitudeRow());
    addRow(tr("Altitude"), inRow({altitude_, new QLabel(tr("m")), altitudeNote}, 4));
    addRow(tr("Grid"), position_.gridRow());
    addRow({}, inRow({locate}, 0));

    connect(position_.fromGrid, &QPushButton::clicked, this, &ObserverSection::fromGrid);
    connect(locate, &QPushButton::clicked, this, &ObserverSection::requestLocation);
    for (const QLineEdit* field : {position_.latitude, position_.longitude, altitude_}) {
        connect(field, &QLineEdit::textEdited, this, [this] { awaitsLocation_ = false; });
    }
}

void ObserverSection::fill(const SettingsTexts& texts) {
    position_.latitude->setText(qText(texts.latitude));
    position_.longitude->setText(qText(texts.longitude));
    altitude_->setText(qText(texts.altitude));
    position_.grid->setText(qText(state().gridLocator.get()));
}

void ObserverSection::collect(SettingsTexts& texts) const {
    texts.latitude = position_.latitude->text().toStdString();
    texts.longitude = position_.longitude->text().toStdString();
    texts.altitude = altitude_->text().toStdString();
}

void ObserverSection::fromGrid() {
    const auto position = position_.positionOfGrid();
    if (!position) return;
    awaitsLocation_ = false;
    position_.fill(*position);
}

void ObserverSection::requestLocation() {
    awaitsLocation_ = true;
    state().location().locate([self = QPointer(this)](const auto& position) {
        if (self && self->awaitsLocation_ && position) self->showLocation(*position);
    });
}

void ObserverSection::showLocation(const LocationService::Position& position) {
    awaitsLocation_ = false;
    position_.fill({position.latitude, position.longitude});
    if (position.altitude) altitude_->setText(qText(altitudeField(*position.altitude)));
}

}  // namespace veloran
