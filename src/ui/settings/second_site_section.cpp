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
    rows_ = {addRow(tr("Name"), inRow({name}, 0)),
             addRow(tr("Latitude"), inRow({position_.latitude}, 0)),
             addRow(tr("Longitude"), inRow({position_.longitude}, 0)),
             addRow(tr("Grid"), inRow({position_.grid, position_.fromGrid}, 6))};
    addNote(tr("Future: covisibility / simultaneous-pass calculations."));

    connect(position_.latitude, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (const auto read = readLatitude(text.toStdString())) this->state().obs2Latitude = *read;
    });
    connect(position_.longitude, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (const auto read = readLongitude(text.toStdString())) {
            this->state().obs2Longitude = *read;
        }
    });
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

void SecondSiteSection::fromGrid() {
    const auto position = position_.positionOfGrid();
    if (!position) return;
    position_.fill(*position);
    state().obs2Latitude = position->lat;
    state().obs2Longitude = position->lon;
}

}  // namespace veloran
