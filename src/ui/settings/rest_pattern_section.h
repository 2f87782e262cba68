#pragma once

#include "ui/settings/form_section.h"

namespace veloran {

/// "SAT_PROTO Output": which frequency the receiver is parked on.
class RestPatternSection : public FormSection {
    Q_OBJECT
  public:
    explicit RestPatternSection(std::shared_ptr<AppState> state);

  private:
    QRadioButton* addChoice(QWidget* group, const QString& text, SatProtoRestPattern pattern);
};

}  // namespace veloran
