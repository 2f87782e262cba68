#pragma once

#include <QListView>
#include <QWidget>
#include <memory>

#include "core/app_state.h"

namespace veloran {

class FavoritesModel;
class TextButton;
class ValueLabel;

/// The scrolling rows of the favourites.
class FavoriteRowsView : public QListView {
    Q_OBJECT
  public:
    explicit FavoriteRowsView(FavoritesModel& model, QWidget* parent = nullptr);

  signals:
    /// By a click on a row's cross, or Delete on the current row.
    void removed(const QModelIndex& index);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    bool isOnCross(const QPoint& at) const;
    void onClicked(const QModelIndex& index);

    QPoint pressed_;
};

/// The favourites below the timeline: how many, each with what is known of it, or a hint when there
/// is none.
class FavoritesList : public QWidget {
    Q_OBJECT
  public:
    static constexpr int kGreatestRowsHeight = 270;

    explicit FavoritesList(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    void setSatellites(std::vector<SatellitePtr> satellites);
    void refresh();
    /// Lets the ages of elements follow the clock.
    void updateLooks();

    /// Of `room` points below the header row of the timeline, how many this takes when the timeline
    /// wants `leastAbove` at least: half of them where more is to be shown, no more than that
    /// takes, and none where not even the header row fits.
    int heightIn(int room, int leastAbove) const;

  signals:
    void browserRequested();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* makeHeader();
    QWidget* makeHint();
    void arrange();
    int headerHeight() const;
    int contentHeight() const;
    int leastContentHeight() const;
    void remove(const QModelIndex& index);

    std::shared_ptr<AppState> state_;
    FavoritesModel* model_;
    ValueLabel* count_ = nullptr;
    TextButton* clear_ = nullptr;
    QWidget* header_;
    QWidget* hint_;
    FavoriteRowsView* rows_;
};

}  // namespace veloran
