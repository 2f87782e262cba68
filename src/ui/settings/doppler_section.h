#pragma once

#include "ui/settings/form_section.h"
#include "ui/settings/settings_form.h"

namespace veloran {

/// "Doppler Output": how often the radio hears of a new frequency.
class DopplerSection : public FormSection {
    Q_OBJECT
  public:
    explicit DopplerSection(std::shared_ptr<AppState> state);

    void fill(const SettingsTexts& texts);
    void collect(SettingsTexts& texts) const;

  private:
    QWidget* makePresets();

    QLineEdit* rate_;
};

}  // namespace veloran
