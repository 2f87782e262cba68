#pragma once

#include <array>
#include <memory>

#include "core/app_state.h"
#include "ui/detail_sheet/detail_sheet_texts.h"
#include "ui/sheet.h"

class QScrollArea;
class QVBoxLayout;

namespace veloran {

class SelectableValue;
class TransmitterRows;
class ValueLabel;

/// All that is known of one satellite, to be read: its elements, channels and next passes.
class SatelliteDetailView : public Sheet {
    Q_OBJECT
  public:
    SatelliteDetailView(std::shared_ptr<AppState> state, SatellitePtr satellite, QWidget* window);

    QSize sizeHint() const override { return {560, 720}; }

  public slots:
    /// Takes what has changed of the satellite: the age of its elements, its channels and passes;
    /// all of it when a load has put another object in its place.
    void refresh();

  private:
    /// The texts of one pass.
    struct PassRow {
        QWidget* row;
        ValueLabel* time;
        ValueLabel* highest;
        ValueLabel* duration;
    };

    void followReload();
    void makeContents();
    QWidget* makeHeader();
    QScrollArea* makeSections();
    void addElements(QVBoxLayout& sections);
    void addLines(QVBoxLayout& sections);
    void addTransmitters(QVBoxLayout& sections);
    void addPasses(QVBoxLayout& sections);
    PassRow makePassRow(std::size_t number);
    void showTransmitters();
    void showPasses();

    std::shared_ptr<AppState> state_;
    SatellitePtr satellite_;
    QWidget* header_ = nullptr;
    QScrollArea* sections_ = nullptr;
    SelectableValue* epoch_ = nullptr;  // only of a body with elements
    ValueLabel* transmittersTitle_ = nullptr;
    ValueLabel* noTransmitters_ = nullptr;
    TransmitterRows* transmitters_ = nullptr;
    ValueLabel* passesTitle_ = nullptr;
    ValueLabel* noPasses_ = nullptr;
    std::array<PassRow, kToldPasses> passRows_{};
    ValueLabel* morePasses_ = nullptr;
    std::shared_ptr<const PassList> shownPasses_;
};

}  // namespace veloran
