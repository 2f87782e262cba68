#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>
#include <vector>

#include "core/app_state.h"
#include "ui/loop_timer.h"

class QLabel;

namespace veloran {

class BrowserModel;
class BrowserTree;
class SearchField;
class StateRefresher;
class TLEImportSheet;
class TextButton;
class TrackedModel;
class ValueLabel;

/// The window in which download groups are subscribed to and satellites are chosen to be tracked.
/// It listens to the state by itself and is kept for as long as the program runs.
class SatelliteBrowser : public QWidget {
    Q_OBJECT
  public:
    explicit SatelliteBrowser(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    /// Reads the state.
    void refresh();

  protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    QWidget* makeToolbar();
    QWidget* makeLeftPanel();
    QWidget* makeRightPanel();
    void connectTree();
    void refreshAvailable();
    void showNote();
    void refreshTracked();
    void search(const QString& text);
    void setAll(const std::vector<SatellitePtr>& satellites, bool selected);
    void toggleSubscription(const std::string& key);
    void clearImported();
    void removeImported(const SatellitePtr& satellite);
    void showDetails(const SatellitePtr& satellite);
    TLEImportSheet& showImportSheet();

    std::shared_ptr<AppState> state_;
    StateRefresher* refresher_;
    QPointer<TLEImportSheet> importSheet_;
    BrowserModel* model_;
    TrackedModel* trackedModel_;
    SearchField* search_ = nullptr;
    ValueLabel* count_ = nullptr;
    ValueLabel* age_ = nullptr;
    QLabel* note_ = nullptr;  // in place of satellites that are not there
    BrowserTree* tree_ = nullptr;
    ValueLabel* trackedCount_ = nullptr;
    TextButton* clear_ = nullptr;
    LoopTimer everyMinute_{state_->loop(), 60};
};

}  // namespace veloran
