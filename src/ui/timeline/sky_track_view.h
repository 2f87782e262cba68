#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "core/app_state.h"
#include "ui/loop_timer.h"
#include "ui/symbol_icon.h"

namespace veloran {

class Divider;
class FavoritesList;
class MiniButton;
class TimelineCanvas;
class ValueLabel;

/// The coming passes of the favourites as arches over a time axis, and the list of favourites,
/// which gives way first where the view is low.
class SkyTrackView : public QWidget {
    Q_OBJECT
  public:
    explicit SkyTrackView(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {700, 400}; }
    QSize minimumSizeHint() const override { return {450, 150}; }

  public slots:
    /// Reads the state; cheap when nothing that is shown has changed.
    void refresh();

  signals:
    void browserRequested();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    /// What is shown of one favourite and may change without another one taking its place.
    struct Favorite {
        SatellitePtr satellite;
        std::shared_ptr<const PassList> passes;
        std::optional<UniqueId> firstChannel;
    };
    bool areFavoritesAsShown() const;
    void readFavorites();

    QWidget* makeHeader();
    QWidget* makeZoomButton(Symbol symbol, const char* name, const QString& words,
                            void (*zoom)(AppState&));
    void showFavorites(bool shows);
    void arrange();

    std::shared_ptr<AppState> state_;
    std::vector<Favorite> favorites_;
    bool showSatSelector_;
    MiniButton* toggle_ = nullptr;
    ValueLabel* hours_ = nullptr;
    QWidget* header_;
    Divider* upperDivider_;
    TimelineCanvas* canvas_;
    Divider* lowerDivider_;
    FavoritesList* list_;
    LoopTimer everyMinute_{state_->loop(), 60};
};

}  // namespace veloran
