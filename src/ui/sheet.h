#pragma once

#include <QDialog>

namespace veloran {

/// A dialog that belongs to one window and is modal to it alone; the program goes on. Escape closes
/// it. It deletes itself when it is closed.
class Sheet : public QDialog {
    Q_OBJECT
  public:
    Sheet(const QString& title, QWidget* window);

    /// Shows it over the middle of its window, no larger than the screen has room with its frame.
    void present();

  private:
    void makeDefaultButtonKnown();
};

}  // namespace veloran
