#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"
#include "ui/pass_list/conflict_alert.h"
#include "ui/second_timer.h"

class QModelIndex;

namespace veloran {

class Badge;
class PassListModel;
class PassRowsView;
class TextButton;
class ValueLabel;

/// The coming passes of the favourites. Picking a row, by mouse or keyboard, selects its pass and
/// a channel for it and starts nothing.
class PassListView : public QWidget {
    Q_OBJECT
  public:
    explicit PassListView(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {450, 200}; }

  public slots:
    void refresh();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    QWidget* makeHeader();
    void describeMoment();
    void describeQueue();
    void select(const QModelIndex& index);
    void toggleQueue(const QModelIndex& index);

    std::shared_ptr<AppState> state_;
    PassListModel* model_;
    PassRowsView* rows_;
    Badge* queued_;
    TextButton* clear_;
    ValueLabel* count_;
    ConflictAlert conflict_;
    QueueIds described_;             ///< the entries that the badge's help tells of
    /// While the list is seen.
    SecondTimer everySecond_{state_->loop(), state_->clock(), this};
};

}  // namespace veloran
