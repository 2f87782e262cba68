#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"
#include "transmitters/transponder_pair.h"

namespace veloran {

class ChoiceBox;

/// The choice of a transponder or single channel of a satellite. Shows nothing for a satellite
/// without channels.
class TransponderPicker : public QWidget {
    Q_OBJECT
  public:
    explicit TransponderPicker(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    void refresh(const SatellitePtr& satellite);

  private:
    /// What of the selected channel shows here.
    struct Selected {
        std::optional<double> centerHz;
        bool inverting;
        bool operator==(const Selected&) const = default;
    };

    void offer(const SatellitePtr& satellite);
    void choose(int index);

    std::shared_ptr<AppState> state_;
    SatellitePtr satellite_;
    std::vector<Transmitter> offered_;
    std::vector<TransmitterSelection> selections_;
    std::optional<Selected> shown_;
    QWidget* row_;
    ChoiceBox* choices_;
    QWidget* inverting_;
};

}  // namespace veloran
