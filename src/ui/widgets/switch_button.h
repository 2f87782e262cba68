#pragma once

#include <QAbstractButton>

namespace veloran {

/// An on/off switch: a knob in a track. Without a text of its own; name it for a screen reader.
class SwitchButton : public QAbstractButton {
    Q_OBJECT
  public:
    explicit SwitchButton(QWidget* parent = nullptr);
    QSize sizeHint() const override;

    /// The same picture for item delegates.
    static QSize pictureSize();
    static void paintPicture(QPainter& painter, const QRect& area, bool on, bool enabled);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace veloran
