#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "core/app_state.h"
#include "ui/settings/form_controls.h"

class QVBoxLayout;

namespace veloran {

/// One section of the form: a heading, and a card with rows under it. A control that is bound to a
/// field of the state changes it at once, and follows it.
class FormSection : public QWidget {
    Q_OBJECT
  public:
    FormSection(std::shared_ptr<AppState> state, const QString& heading);

    /// Brings the bound controls up to date; cheap when nothing has changed.
    virtual void refresh();

    void addPart(QWidget* part);
    /// A label with its content beside it. Returns the whole row.
    QWidget* addRow(const QString& label, QWidget* content);
    void addNote(const QString& text);

    void addSwitch(const ControlName& name, Published<bool> AppState::*field);
    QLineEdit* boundField(const ControlName& name, const QString& placeholder,
                          Published<std::string> AppState::*field);

    struct SliderRange {
        int lowest;
        int highest;
    };
    /// A slider by steps of 1 with its value beside it.
    void addSlider(const QString& label, const ControlName& name, SliderRange range,
                   Published<double> AppState::*field, std::string (*valueText)(double));

  protected:
    AppState& state() const { return *state_; }
    const std::shared_ptr<AppState>& sharedState() const { return state_; }
    /// `action` runs in every refresh.
    void follow(std::function<void()> action) { followers_.push_back(std::move(action)); }

  private:
    std::shared_ptr<AppState> state_;
    QVBoxLayout* rows_;
    std::vector<std::function<void()>> followers_;
};

}  // namespace veloran
