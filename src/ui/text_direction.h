#pragma once

#include <QObject>

namespace veloran {

/// Keeps the program from left to right while it lives: it speaks English, and on a mirrored
/// desktop figures with signs and units would come apart where nothing else is mirrored.
class LeftToRight : public QObject {
    Q_OBJECT
  public:
    explicit LeftToRight(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace veloran
