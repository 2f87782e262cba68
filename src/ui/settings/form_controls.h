#pragma once

#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <functional>

class QHBoxLayout;
class QLabel;

namespace veloran {

class SwitchButton;
class ValueLabel;

/// How a control is found by scripts and told by a screen reader.
struct ControlName {
    QString object;
    QString spoken;
};

/// A mono text field of a fixed width; 0 for as wide as there is room.
QLineEdit* makeField(const ControlName& name, const QString& placeholder, int width,
                     int pixels = 12);
inline constexpr int kCoordWidth = 140;
inline constexpr int kTextWidth = 200;

/// Return in the field does this, and no longer presses the default button of the sheet.
void actOnReturn(QLineEdit& field, std::function<void()> action);

/// A bordered button that leaves Return to the default button of the sheet.
QPushButton* makeButton(const ControlName& name, const QString& text, int pixels);

/// Text of less weight that wraps.
QLabel* makeNote(const QString& text, int pixels = 11);

/// A row without margins, for what stands beside a label.
QWidget* inRow(std::initializer_list<QWidget*> parts, int spacing);

/// A slider over whole numbers. The wheel turns it only while it has the focus: a form scrolls
/// under the pointer.
class FormSlider : public QSlider {
    Q_OBJECT
  public:
    FormSlider(const ControlName& name, int lowest, int highest);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

/// A radio button whose text wraps.
class WrappingRadio : public QRadioButton {
    Q_OBJECT
  public:
    WrappingRadio(const QString& objectName, const QString& text);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  protected:
    bool hitButton(const QPoint& at) const override { return rect().contains(at); }
    void paintEvent(QPaintEvent* event) override;

  private:
    int textLeft() const;
    QRect textRect(int width) const;
    void drawIndicator(QPainter& painter) const;
};

/// A switch and what it is about, which may be clicked as well.
class SwitchRow : public QWidget {
    Q_OBJECT
  public:
    SwitchRow(const ControlName& name, QWidget* caption);
    /// With its own name as the caption.
    explicit SwitchRow(const ControlName& name, int pixels = 13);

    SwitchButton* button() const { return button_; }
    /// Follows the state, which hears nothing of it.
    void display(bool on);
    /// A few words of less weight at the end of the row; a screen reader tells them too.
    void setDetail(const QString& text);

  signals:
    /// By the user.
    void switched(bool on);

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    SwitchButton* button_;
    ValueLabel* detail_ = nullptr;  // from the first words on
};

}  // namespace veloran
