#include "ui/timeline/favorite_row_delegate.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <algorithm>

#include "ui/q_text.h"
#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/timeline/favorites_model.h"
#include "ui/widgets/row_painting.h"

namespace veloran {

namespace {

constexpr int kHorizontalPadding = 8;
constexpr int kVerticalPadding = 3;
constexpr int kSpacing = 6;
constexpr int kDot = 8;
constexpr int kRemove = 15;
constexpr int kArrow = 11;
constexpr int kSmallestPixels = 12;

constexpr int kSourcesWidth = 180;
constexpr int kLeastSourcesWidth = 60;
constexpr int kAgeWidth = 54;
constexpr int kPassesWidth = 48;
constexpr int kChannelWidth = 150;
constexpr int kLeastNameWidth = 110;

QFont nameFont() {
    return Theme::mono(15, QFont::DemiBold);
}

void drawText(QPainter& painter, const QRect& area, const std::string& text, const QFont& font,
              const Tint& tint, Qt::Alignment side) {
    drawRowText(painter, area, {qText(text), font, tint, side, kSmallestPixels},
                Theme::color(Ink::window));
}

void drawPasses(QPainter& painter, const QRect& area, const std::string& count) {
    if (count.empty()) return;
    const QFont font = Theme::mono(14);
    drawText(painter, area, count, font, {Ink::green}, Qt::AlignRight);
    const int textLeft =
        area.right() + 1 - QFontMetrics(font).horizontalAdvance(qText(count)) - kArrow - 2;
    paintSymbol(painter, middleSquare(area.translated(textLeft - area.left(), 0), kArrow),
                Symbol::arrowUpRight, Theme::color(Ink::green));
}

}  // namespace

FavoriteColumns favoriteColumns(const QRect& row) {
    const QRect content = row.adjusted(kHorizontalPadding, 0, -kHorizontalPadding, 0);
    int right = content.right() + 1;
    const auto takeRight = [&](int width) {
        right -= width;
        const QRect column(right, row.top(), width, row.height());
        right -= kSpacing;
        return column;
    };
    FavoriteColumns columns;
    columns.remove = takeRight(kRemove);
    columns.channel = takeRight(kChannelWidth);
    columns.passes = takeRight(kPassesWidth);
    columns.age = takeRight(kAgeWidth);
    columns.dot = {content.left(), row.top(), kDot, row.height()};
    const int left = content.left() + kDot + kSpacing;
    const int room = std::min(kSourcesWidth, right - left - kLeastNameWidth - kSpacing);
    if (room >= kLeastSourcesWidth) columns.sources = takeRight(room);
    columns.name = {left, row.top(), std::max(0, right - left), row.height()};
    return columns;
}

int FavoriteRowDelegate::rowHeight() {
    return QFontMetrics(nameFont()).height() + 2 * kVerticalPadding;
}

QSize FavoriteRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, rowHeight()};
}

void FavoriteRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    const FavoriteLook look = model_.look(index.row());
    const FavoriteColumns columns = favoriteColumns(option.rect);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Theme::color(look.color));
    painter->drawEllipse(middleSquare(columns.dot, kDot));
    drawText(*painter, columns.name, look.name, nameFont(), {Ink::primary}, Qt::AlignLeft);
    drawText(*painter, columns.sources, look.sources, Theme::mono(12), {Ink::secondary, 0.7},
             Qt::AlignLeft);
    drawText(*painter, columns.age, look.age, Theme::mono(14), look.ageInk, Qt::AlignRight);
    drawPasses(*painter, columns.passes, look.passes);
    drawText(*painter, columns.channel, look.channel, Theme::mono(14), {Ink::cyan}, Qt::AlignRight);
    paintSymbol(*painter, middleSquare(columns.remove, kRemove), Symbol::crossDisc,
                Theme::color(Ink::red, 0.7));
    if (option.state & QStyle::State_HasFocus) {
        drawRowFocus(*painter, option.rect);
    }
    painter->restore();
}

QString FavoriteRowDelegate::helpAt(const QPoint& at, const QRect& rowArea, int row) const {
    const FavoriteColumns columns = favoriteColumns(rowArea);
    const FavoriteLook look = model_.look(row);
    if (columns.sources.contains(at)) return qText(look.sourcesHelp);
    if (columns.age.contains(at)) return tr("TLE epoch age");
    if (columns.passes.contains(at)) return qText(look.passesHelp);
    if (columns.remove.contains(at)) return tr("Remove from favorites");
    const bool nameIsCut =
        QFontMetrics(nameFont()).horizontalAdvance(qText(look.name)) > columns.name.width();
    if (columns.name.contains(at) && nameIsCut) return qText(look.name);
    return {};
}

bool FavoriteRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                    const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    showRowHelp(*event, view, helpAt(event->pos(), option.rect, index.row()));
    return true;
}

}  // namespace veloran
