#pragma once

#include <QWidget>

namespace veloran {

/// A line of one point between two parts.
class Divider : public QWidget {
    Q_OBJECT
  public:
    explicit Divider(Qt::Orientation orientation, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace veloran
