#pragma once

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>
#include <vector>

#include "transmitters/transmitter.h"

namespace veloran {

/// The channels of one satellite. What a row shows is made when it is seen.
class TransmitterModel : public QAbstractListModel {
    Q_OBJECT
  public:
    using QAbstractListModel::QAbstractListModel;

    void setTransmitters(std::vector<Transmitter> transmitters);
    const std::vector<Transmitter>& transmitters() const { return transmitters_; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    const Transmitter& transmitter(int row) const {
        return transmitters_[static_cast<std::size_t>(row)];
    }

  private:
    std::vector<Transmitter> transmitters_;
};

class TransmitterRowDelegate : public QStyledItemDelegate {
    Q_OBJECT
  public:
    explicit TransmitterRowDelegate(const TransmitterModel& model, QObject* parent = nullptr)
        : QStyledItemDelegate(parent), model_(model) {}

    static int rowHeight();

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

  private:
    const TransmitterModel& model_;
};

/// The rows of the channels at their full height: what is around them scrolls.
class TransmitterRows : public QListView {
    Q_OBJECT
  public:
    explicit TransmitterRows(QWidget* parent = nullptr);

    const std::vector<Transmitter>& transmitters() const { return model_->transmitters(); }
    void setTransmitters(std::vector<Transmitter> transmitters);

  private:
    TransmitterModel* model_;
};

}  // namespace veloran
