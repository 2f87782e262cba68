#pragma once

#include "ui/settings/form_section.h"
#include "ui/settings/position_fields.h"
#include "ui/settings/typed_values.h"

namespace veloran {

/// "Second Observer Location (optional)". What is typed here takes effect at once.
class SecondSiteSection : public FormSection {
    Q_OBJECT
  public:
    explicit SecondSiteSection(std::shared_ptr<AppState> state);
    void refresh() override;

  private:
    void fill();
    void take(const TypedPlace& typed);
    void fromGrid();

    PositionFields position_;
    std::vector<QWidget*> rows_;  // shown while the site is
};

}  // namespace veloran
