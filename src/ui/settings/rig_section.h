#pragma once

#include "ui/settings/form_section.h"
#include "ui/settings/settings_form.h"

namespace veloran {

/// "Rig Control (rigctld)": where the radio's server is, and how to talk to it.
class RigSection : public FormSection {
    Q_OBJECT
  public:
    explicit RigSection(std::shared_ptr<AppState> state);

    void fill(const SettingsTexts& texts);
    void collect(SettingsTexts& texts) const;

  private:
    QLineEdit* host_;
    QLineEdit* port_;
};

}  // namespace veloran
