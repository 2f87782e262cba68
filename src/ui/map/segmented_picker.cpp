#include "ui/map/segmented_picker.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "ui/theme.h"

namespace veloran {

namespace {

constexpr int kPixels = 12;
constexpr int kHeight = 22;
constexpr double kRadius = 5;

class Segment final : public QAbstractButton {
  public:
    explicit Segment(const QString& label) {
        setText(label);
        setAccessibleName(label);
        setCheckable(true);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        setFixedHeight(kHeight);
    }
    QSize sizeHint() const override {
        return {QFontMetrics(face()).horizontalAdvance(text()) + 12, kHeight};
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        if (isChecked()) {
            painter.setBrush(palette().highlight());
            painter.drawRoundedRect(plate(), kRadius - 1, kRadius - 1);
        } else if (underMouse() || isDown()) {
            painter.setBrush(Theme::color(Ink::primary, isDown() ? 0.16 : 0.08));
            painter.drawRoundedRect(plate(), kRadius - 1, kRadius - 1);
        }
        painter.setFont(face());
        painter.setPen(isChecked() ? palette().highlightedText().color()
                                   : Theme::text(Ink::primary));
        painter.drawText(rect(), Qt::AlignCenter, text());
        if (!hasFocus()) return;
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().highlightedText().color(), 1));
        painter.drawRoundedRect(plate().adjusted(1.5, 1.5, -1.5, -1.5), kRadius - 2, kRadius - 2);
    }

  private:
    QRectF plate() const { return QRectF(rect()).adjusted(1, 1, -1, -1); }
    static QFont face() { return Theme::face(kPixels, QFont::Medium); }
};

}  // namespace

SegmentedPicker::SegmentedPicker(const QStringList& labels, QWidget* parent) : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (int i = 0; i < labels.size(); ++i) {
        auto* segment = new Segment(labels[i]);
        segment->installEventFilter(this);
        group_.addButton(segment, i);
        row->addWidget(segment, 1);
    }
    connect(&group_, &QButtonGroup::idClicked, this, [this](int index) {
        offerChosenToTab();
        emit picked(index);
    });
    choose(0);
}

void SegmentedPicker::choose(int index) {
    group_.button(index)->setChecked(true);
    offerChosenToTab();
}

void SegmentedPicker::pick(int index) {
    if (index < 0 || index >= static_cast<int>(group_.buttons().size()) || index == chosen()) {
        return;
    }
    choose(index);
    segment(index).setFocus(Qt::TabFocusReason);
    emit picked(index);
}

void SegmentedPicker::offerChosenToTab() {
    for (QAbstractButton* segment : group_.buttons()) {
        segment->setFocusPolicy(segment->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    }
    setFocusProxy(group_.checkedButton());
}

bool SegmentedPicker::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent*>(event)->key()) {
            case Qt::Key_Left:
            case Qt::Key_Up:
                pick(chosen() - 1);
                return true;
            case Qt::Key_Right:
            case Qt::Key_Down:
                pick(chosen() + 1);
                return true;
            default:
                break;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Theme::color(Ink::separator), 1));
    painter.setBrush(Theme::color(Ink::window, 0.85));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
}

}  // namespace veloran
