#pragma once

#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "core/app_state.h"
#include "ui/ink.h"

class QHBoxLayout;
class QVBoxLayout;

namespace veloran {

class Badge;
class FoldingRow;
class SelectableValue;
class ValueLabel;

/// Whether the uplink has anything to show: it is there and another channel than the downlink, or
/// it has a frequency.
bool showsUplink(const std::optional<Transmitter>& uplink,
                 const std::optional<Transmitter>& downlink, double uplinkHz);

/// What the radio is told, and the three offsets by hand.
class FrequencyColumn : public QWidget {
    Q_OBJECT
  public:
    explicit FrequencyColumn(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

  public slots:
    void refresh();

  private:
    struct Bump {
        const char* text;  ///< with the true minus sign
        const char* name;  ///< ends the object's name
        double hz;         ///< 0: back to none
    };

    double uplinkFrequency() const;
    QVBoxLayout* makeDownlink();
    QVBoxLayout* makeUplink();
    QWidget* makePassbandRow();
    QWidget* makeCalibrationRow();
    QWidget* makeNoUplink();
    void addBumps(QHBoxLayout& row, const QString& offset, const std::vector<Bump>& bumps,
                  std::function<void(double)> bump, std::function<void()> clear);
    ValueLabel* makeOffsetValue(const QString& offset, Ink ink) const;

    std::shared_ptr<AppState> state_;
    SelectableValue* rxFrequency_;
    ValueLabel* rxAtSatellite_;
    ValueLabel* rxDoppler_;
    ValueLabel* ritPart_;
    ValueLabel* rit_;
    QWidget* uplink_;
    QWidget* noUplink_;
    SelectableValue* txFrequency_;
    ValueLabel* txAtSatellite_;
    ValueLabel* txDoppler_;
    Badge* sense_;
    ValueLabel* passband_;
    ValueLabel* calibration_;
    ValueLabel* storedOnly_;
};

}  // namespace veloran
