#include "ui/settings/second_site_section.h"

#include "ui/q_text.h"
#include "ui/settings/settings_form.h"

namespace veloran {

SecondSiteSection::SecondSiteSection(std::shared_ptr<AppState> state)
    : FormSection(std::move(state), tr("Second Observer Location (optional)")),
      position_({"obs2", tr("Second site"), "0.0", "0.0", "FN31pr"}) {
    addSwitch({"obs2Enabled", tr("Show second site on map")}, &AppState::obs2Enabled);
    auto* name =
        boundField({"obs2Name", tr("Second site name")}, tr("Site 2"), &AppState::obs2Name);
    rows_ = {addRow(tr("Name"), inRow({name}, 0)), addRow(tr("Latitude"), position_.latitudeRow()),
             addRow(tr("Longitude"), position_.longitudeRow()),
             addRow(tr("Grid"), position_.gridRow())};
    addNote(tr("Future: covisibility / simultaneous-pass calculations."));

    connect(position_.latitude, &QLineEdit::textEdited, this,
            [this](const QString& text) { take(typedPlace(text.toStdString(), {})); });
    connect(position_.longitude, &QLineEdit::textEdited, this,
            [this](const QString& text) { take(typedPlace({}, text.toStdString())); });
    connect(position_.fromGrid, &QPushButton::clicked, this, &SecondSiteSection::fromGrid);
    fill();
}

void SecondSiteSection::refresh() {
    FormSection::refresh();
    for (QWidget* row : rows_) row->setVisible(state().obs2Enabled);
}

void SecondSiteSection::fill() {
    const LatLon present{state().obs2Latitude, state().obs2Longitude};
    position_.fill(present);
    position_.grid->setText(qText(toMaidenhead(present.lat, present.lon)));
}

void SecondSiteSection::take(const TypedPlace& typed) {
    if (typed.latitude) state().obs2Latitude = *typed.latitude;
    if (typed.longitude) state().obs2Longitude = *typed.longitude;
}

void SecondSiteSection::fromGrid() {
    const auto position = position_.positionOfGrid();
    if (!position) return;
    position_.fill(*position);
    state().obs2Latitude = position->lat;
    state().obs2Longitude = position->lon;
}

}  // namespace veloran
