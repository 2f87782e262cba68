#include "ui/detail_sheet/transmitter_rows.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include "ui/detail_sheet/detail_sheet_texts.h"
#include "ui/q_text.h"
#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/plain_rows.h"
#include "ui/widgets/row_painting.h"

namespace veloran {

namespace {

constexpr int kSymbol = 10;
constexpr int kSymbolWidth = 14;
constexpr int kSpacing = 8;
constexpr int kPartSpacing = 6;
constexpr int kLineSpacing = 2;
constexpr int kVerticalPadding = 2;

QFont descriptionFont() {
    return Theme::face(12);
}

int upperHeight() {
    return QFontMetrics(descriptionFont()).height();
}

int lowerHeight() {
    return QFontMetrics(Theme::mono(10)).height();
}

QRect descriptionArea(const QRect& row) {
    return {row.left() + kSymbolWidth + kSpacing, row.top() + kVerticalPadding,
            row.width() - kSymbolWidth - kSpacing, upperHeight()};
}

}  // namespace

void TransmitterModel::setTransmitters(std::vector<Transmitter> transmitters) {
    beginResetModel();
    transmitters_ = std::move(transmitters);
    endResetModel();
}

int TransmitterModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(transmitters_.size());
}

QVariant TransmitterModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const Transmitter& shown = transmitter(index.row());
    if (role == Qt::DisplayRole) return qText(shown.description);
    if (role == Qt::AccessibleTextRole) return qText(spokenTransmitter(transmitterLook(shown)));
    return {};
}

int TransmitterRowDelegate::rowHeight() {
    return upperHeight() + kLineSpacing + lowerHeight() + 2 * kVerticalPadding;
}

QSize TransmitterRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, rowHeight()};
}

void TransmitterRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
    const TransmitterLook look = transmitterLook(model_.transmitter(index.row()));
    const QColor background = Theme::color(Ink::window);
    const QRect upper = descriptionArea(option.rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRect symbolArea(option.rect.left(), upper.top(), kSymbolWidth, upper.height());
    paintSymbol(*painter, middleSquare(symbolArea, kSymbol),
                look.isUplink ? Symbol::arrowUp : Symbol::arrowDown,
                Theme::color(look.isUplink ? Ink::orange : Ink::cyan));
    TextLine(*painter, upper, background)
        .left(qText(look.description), descriptionFont(), {Ink::primary}, 0);

    const QRect lower(upper.left(), upper.bottom() + 1 + kLineSpacing, upper.width(),
                      lowerHeight());
    TextLine line(*painter, lower, background);
    line.left(qText(look.frequency), Theme::mono(10), {Ink::cyan}, kPartSpacing);
    line.left(qText(look.mode), Theme::face(10), {Ink::primary}, kPartSpacing);
    if (look.inverting) line.left("INV", Theme::face(9), {Ink::purple}, kPartSpacing);
    if (!look.tone.empty()) line.left(qText(look.tone), Theme::face(9), {Ink::yellow}, 0);
    painter->restore();
}

bool TransmitterRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                       const QStyleOptionViewItem& option,
                                       const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    const QString description = qText(model_.transmitter(index.row()).description);
    const QRect area = descriptionArea(option.rect);
    const bool tells =
        area.contains(event->pos()) && isCut(descriptionFont(), description, area.width());
    showRowHelp(*event, view, tells ? description : QString());
    return true;
}

TransmitterRows::TransmitterRows(QWidget* parent)
    : QListView(parent), model_(new TransmitterModel(this)) {
    setObjectName("transmitters");
    setAccessibleName(tr("Transmitters"));
    makePlainRows(*this);
    setUniformItemSizes(true);
    setFocusPolicy(Qt::NoFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setBackgroundRole(QPalette::Window);
    setModel(model_);
    setItemDelegate(new TransmitterRowDelegate(*model_, this));
    setFixedHeight(0);
}

void TransmitterRows::setTransmitters(std::vector<Transmitter> transmitters) {
    setFixedHeight(static_cast<int>(transmitters.size()) * TransmitterRowDelegate::rowHeight());
    model_->setTransmitters(std::move(transmitters));
}

}  // namespace veloran
