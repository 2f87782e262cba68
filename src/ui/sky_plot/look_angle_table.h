#pragma once

#include <QWidget>
#include <array>
#include <memory>

#include "core/app_state.h"
#include "ui/sky_plot/look_angle_rows.h"
#include "ui/sky_plot/sky_plot_layout.h"

namespace veloran {

class Divider;
class ValueLabel;

/// Times and state of the selected pass, and the satellite's live look angles.
class LookAngleTable : public QWidget {
    Q_OBJECT
  public:
    explicit LookAngleTable(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    /// What its face measures at a size, with room for the widest value that it shows.
    FaceMetrics measure(int pixels) const;
    void arrange(const TableLayout& layout);

  public slots:
    /// Takes up another selection.
    void refresh();
    /// Shows the values of this moment.
    void showNow();

  signals:
    /// The values have become wider or narrower: it wants another place.
    void widestChanged();

  private:
    std::shared_ptr<AppState> state_;
    std::optional<UniqueId> shownPass_;
    SatellitePtr shownSatellite_;
    std::array<ValueLabel*, kTableRows> labels_{};
    std::array<ValueLabel*, kTableRows> values_{};
    Divider* divider_;
    RowValues rows_;
    int pixels_ = TableLayout::kLargestPixels;
    qsizetype widest_;
};

}  // namespace veloran
