#include "ui/pass_list/pass_row_delegate.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include "ui/pass_list/pass_list_model.h"
#include "ui/q_text.h"
#include "ui/scene/mini_polar_plot.h"
#include "ui/scene/queue_mark.h"
#include "ui/scene/scene_painter.h"
#include "ui/theme.h"
#include "ui/widgets/row_painting.h"

namespace veloran {

namespace {

constexpr int kHorizontalPadding = 10;
constexpr int kVerticalPadding = 7;
constexpr int kSpacing = 8;
constexpr int kMark = 18;
constexpr int kThumbnail = 60;
constexpr int kLineSpacing = 3;
constexpr int kDot = 10;
constexpr int kDividerIndent = 52;

void drawTexts(QPainter& painter, const QRect& area, const PassRowLook& look,
               const QColor& satelliteColor, const QColor& background) {
    const QFont name = Theme::mono(16, QFont::DemiBold);
    const QFont elevation = Theme::mono(18, QFont::Bold);
    const QFont time = Theme::mono(14, QFont::Medium);
    const QFont plain = Theme::mono(14);
    const int upper = QFontMetrics(elevation).height();
    const QFont small = Theme::face(11);
    const int lower = QFontMetrics(plain).height();
    const int last = look.warning.empty() ? 0 : QFontMetrics(small).height();
    const int top = area.top() + (area.height() - upper - kLineSpacing - lower - last) / 2;

    TextLine first(painter, {area.left(), top, area.width(), upper}, background);
    first.right(qText(look.elevation), elevation, look.elevationInk, kSpacing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(satelliteColor);
    painter.drawEllipse(QRectF(area.left(), top + (upper - kDot) / 2.0, kDot, kDot));
    first.skip(kDot + 6);
    first.left(qText(look.name), name, look.nameInk, 0);

    TextLine second(painter, {area.left(), top + upper + kLineSpacing, area.width(), lower},
                    background);
    second.right(qText(look.direction), plain, {Ink::secondary}, 9);
    second.right(qText(look.duration), plain, {Ink::secondary}, kSpacing);
    second.left(qText(look.time), time, look.timeInk, 12);
    second.left(qText(look.relative), plain, look.relativeInk, 0);

    if (look.warning.empty()) return;
    const int third = top + upper + kLineSpacing + lower;
    TextLine(painter, {area.left(), third, area.width(), last}, background)
        .left(qText(look.warning), small, {Ink::secondary}, 0);
}

void drawScene(QPainter& painter, const QPoint& at, const scene::Scene& scene) {
    painter.save();
    painter.translate(at);
    ScenePainter(painter).draw(scene);
    painter.restore();
}

}  // namespace

QRect PassRowDelegate::queueMarkArea(const QRect& row) {
    return {row.left(), row.top(), kHorizontalPadding + kMark + kSpacing / 2, row.height()};
}

bool PassRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                const QStyleOptionViewItem& option, const QModelIndex& index) {
    const bool onMark = event->type() == QEvent::ToolTip && index.isValid() &&
                        queueMarkArea(option.rect).contains(event->pos());
    if (!onMark) return QStyledItemDelegate::helpEvent(event, view, option, index);
    QToolTip::showText(event->globalPos(), qText(queueMarkHelp(model_.look(index.row()).queued)),
                       view);
    return true;
}

void PassRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    const PassRow& row = model_.row(index.row());
    const PassRowLook look = model_.look(index.row());

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QColor background = Theme::color(Ink::control);
    if (look.background) {
        background = blended(Theme::color(*look.background), background);
        painter->fillRect(option.rect.adjusted(0, 0, 0, -1), background);
    }
    const QRect content = option.rect.adjusted(kHorizontalPadding, kVerticalPadding,
                                               -kHorizontalPadding, -kVerticalPadding - 1);
    drawScene(*painter, {content.left(), content.center().y() - kMark / 2},
              queueMarkScene(look.queued.has_value(), kMark));
    drawScene(*painter, {content.left() + kMark + kSpacing, content.top()},
              miniPolarPlotScene(row.pass(), kThumbnail, kThumbnail));
    drawTexts(*painter, content.adjusted(kMark + kThumbnail + 2 * kSpacing, 0, 0, 0), look,
              Theme::color(SatelliteColorPalette::color(row.satellite->id)), background);

    QRect divider = option.rect.adjusted(kDividerIndent, 0, 0, 0);
    divider.setTop(divider.bottom());
    painter->fillRect(divider, Theme::color(Ink::separator));
    if (option.state & QStyle::State_HasFocus) {
        drawRowFocus(*painter, option.rect.adjusted(0, 0, 0, -1));
    }
    painter->restore();
}

QSize PassRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, kThumbnail + 2 * kVerticalPadding + 1};
}

}  // namespace veloran
