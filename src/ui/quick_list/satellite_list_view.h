#pragma once

#include <QListView>
#include <memory>
#include <vector>

#include "core/app_state.h"
#include "ui/quick_list/quick_list_model.h"
#include "ui/sheet.h"

namespace veloran {

class SearchField;
class ValueLabel;

/// The scrolling rows of the quick list.
class QuickListRows : public QListView {
    Q_OBJECT
  public:
    explicit QuickListRows(QuickListModel& model, QWidget* parent = nullptr);

    /// Draws the rows in sight anew when they would look otherwise.
    void refresh();
    /// Takes the keyboard over, on the first row if it was on none.
    void enter();

  private:
    std::vector<QuickListLook> looksInSight() const;

    const QuickListModel& model_;
    std::vector<QuickListLook> shown_;
};

/// The short list of all satellites, to select from. It is open while the state's showSatelliteList
/// is set: closing it clears that, and it closes when something else does. Escape clears a search
/// before it closes the sheet.
class SatelliteListView : public Sheet {
    Q_OBJECT
  public:
    SatelliteListView(std::shared_ptr<AppState> state, QWidget* window);

    QSize sizeHint() const override { return {400, 560}; }

  public slots:
    void refresh();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QWidget* makeHeader();
    QWidget* makePresets();

    std::shared_ptr<AppState> state_;
    QuickListModel* model_;
    ValueLabel* count_ = nullptr;
    SearchField* search_;
    QuickListRows* rows_;
};

}  // namespace veloran
