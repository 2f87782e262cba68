#pragma once

#include "platform/location_service.h"
#include "ui/settings/form_section.h"
#include "ui/settings/position_fields.h"
#include "ui/settings/settings_form.h"

namespace veloran {

/// "Observer Location": the place of the station.
class ObserverSection : public FormSection {
    Q_OBJECT
  public:
    explicit ObserverSection(std::shared_ptr<AppState> state);

    void fill(const SettingsTexts& texts);
    void collect(SettingsTexts& texts) const;

  private:
    void fromGrid();
    /// The form does not wait for the answer, and drops it once the user has gone on.
    void requestLocation();
    void showLocation(const LocationService::Position& position);

    PositionFields position_;
    QLineEdit* altitude_;
    bool awaitsLocation_ = false;
};

}  // namespace veloran
