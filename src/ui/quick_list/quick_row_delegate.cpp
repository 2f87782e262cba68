#include "ui/quick_list/quick_row_delegate.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "ui/q_text.h"
#include "ui/quick_list/quick_list_model.h"
#include "ui/theme.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/row_painting.h"

namespace veloran {

namespace {

constexpr int kHorizontalPadding = 12;
constexpr int kVerticalPadding = 4;
constexpr int kCheck = 16;
constexpr int kSpacing = 8;
constexpr int kLineSpacing = 1;
constexpr int kFrequencyWidth = 120;

QFont nameFont() {
    return Theme::face(12, QFont::Medium);
}

QFont smallFont() {
    return Theme::face(9);
}

void drawCheck(QPainter& painter, const QStyleOptionViewItem& option, const QRect& area,
               bool isOn) {
    QStyleOptionViewItem box = option;
    box.rect = middleSquare(area, kCheck);
    box.state &= ~QStyle::State_HasFocus;
    box.state |= isOn ? QStyle::State_On : QStyle::State_Off;
    option.widget->style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, &painter,
                                          option.widget);
}

void drawLabel(QPainter& painter, const QRect& area, const QuickListLook& look,
               const QColor& background) {
    const int upper = QFontMetrics(nameFont()).height();
    const int lower = QFontMetrics(smallFont()).height();
    const int top = area.top() + (area.height() - upper - kLineSpacing - lower) / 2;
    TextLine(painter, {area.left(), top, area.width(), upper}, background)
        .left(qText(look.name), nameFont(), {Ink::primary}, 0);
    TextLine line(painter, {area.left(), top + upper + kLineSpacing, area.width(), lower},
                  background);
    line.left(qText(look.norad), smallFont(), {Ink::secondary}, kSpacing);
    if (!look.channels.empty()) {
        line.left(qText(look.channels), smallFont(), {Ink::orange}, kSpacing);
    }
    if (!look.passes.empty()) line.left(qText(look.passes), smallFont(), {Ink::green}, 0);
}

/// Without a frequency its room is the label's.
QRect labelArea(const QuickColumns& columns, const QuickListLook& look) {
    return look.frequency.empty() ? columns.label.united(columns.frequency) : columns.label;
}

bool isToggle(const QEvent& event, const QRect& row, const QuickListLook& look) {
    if (event.type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent&>(event).key();
        return key == Qt::Key_Space || key == Qt::Key_Select;
    }
    // The release after a double click does not get here.
    if (event.type() != QEvent::MouseButtonRelease && event.type() != QEvent::MouseButtonDblClick) {
        return false;
    }
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const bool isOnFrequency =
        !look.frequency.empty() && quickColumns(row).frequency.contains(mouse.position().toPoint());
    return mouse.button() == Qt::LeftButton && !isOnFrequency;
}

}  // namespace

QuickColumns quickColumns(const QRect& row) {
    const QRect content = row.adjusted(kHorizontalPadding, 0, -kHorizontalPadding, 0);
    const int left = content.left() + kCheck + kSpacing;
    const int right = content.right() + 1 - kFrequencyWidth;
    return {.check = {content.left(), row.top(), kCheck, row.height()},
            .label = {left, row.top(), std::max(0, right - kSpacing - left), row.height()},
            .frequency = {right, row.top(), kFrequencyWidth, row.height()}};
}

QSize QuickRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, QFontMetrics(nameFont()).height() + kLineSpacing +
                   QFontMetrics(smallFont()).height() + 2 * kVerticalPadding};
}

void QuickRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    const QuickListLook look = model_.look(index.row());
    const QuickColumns columns = quickColumns(option.rect);
    const QColor background = Theme::color(Ink::control);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    drawCheck(*painter, option, columns.check, look.isSelected);
    drawLabel(*painter, labelArea(columns, look), look, background);
    drawRowText(*painter, columns.frequency,
                {qText(look.frequency), Theme::mono(10), {Ink::cyan}, Qt::AlignRight}, background);
    if (option.state & QStyle::State_HasFocus) drawRowFocus(*painter, option.rect);
    painter->restore();
}

bool QuickRowDelegate::editorEvent(QEvent* event, QAbstractItemModel* model,
                                   const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (!isToggle(*event, option.rect, model_.look(index.row()))) return false;
    const bool isOn = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
    return model->setData(index, isOn ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
}

bool QuickRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                 const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    showRowHelp(*event, view, helpAt(event->pos(), option.rect, index));
    return true;
}

QString QuickRowDelegate::helpAt(const QPoint& at, const QRect& row,
                                 const QModelIndex& index) const {
    const QuickListLook look = model_.look(index.row());
    const QRect label = labelArea(quickColumns(row), look);
    const QString name = qText(look.name);
    return label.contains(at) && isCut(nameFont(), name, label.width()) ? name : QString();
}

}  // namespace veloran
