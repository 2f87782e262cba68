#pragma once

#include <memory>

#include "core/app_state.h"
#include "ui/settings/settings_form.h"
#include "ui/sheet.h"

class QScrollArea;

namespace veloran {

class DopplerSection;
class FormSection;
class ObserverSection;
class RigSection;

/// All that the user configures, on screen while `showSettings` is set. Fields whose text has to be
/// read take effect with "Apply"; switches, sliders, names and the second site at once, and
/// "Cancel" leaves those as they are.
class SettingsView : public Sheet {
    Q_OBJECT
  public:
    SettingsView(std::shared_ptr<AppState> state, QWidget* window);

    /// What is bound to the state follows it; what is being typed stays.
    void refresh();
    void done(int result) override;
    QSize sizeHint() const override;

  private:
    QWidget* makeTitle();
    QScrollArea* makeForm();
    QWidget* makeButtons();
    void addSections();
    void fill();
    void apply();

    std::shared_ptr<AppState> state_;
    std::vector<FormSection*> sections_;
    ObserverSection* observer_ = nullptr;
    RigSection* rig_ = nullptr;
    DopplerSection* doppler_ = nullptr;
};

}  // namespace veloran
