#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"

class QProgressBar;

namespace veloran {

class Spinner;
class ValueLabel;

/// The top row of the main window: name, version, what the program is doing, where the observer is
/// and the buttons of the window.
class TitleBar : public QWidget {
    Q_OBJECT
  public:
    explicit TitleBar(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

  public slots:
    void refresh();

  signals:
    void browserRequested();

  private:
    void showStatus();
    QWidget* makeStatusArea();
    QWidget* makeButtons();

    std::shared_ptr<AppState> state_;
    Spinner* spinner_;
    ValueLabel* status_;
    QProgressBar* progress_;
    ValueLabel* position_;
    ValueLabel* locator_;
};

}  // namespace veloran
