#include "ui/browser/browser_row_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include "ui/browser/browser_model.h"
#include "ui/browser/browser_texts.h"
#include "ui/q_text.h"
#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/row_painting.h"
#include "ui/widgets/switch_button.h"

namespace veloran {

namespace {

constexpr int kChevron = 10;
constexpr int kDot = 8;
constexpr int kInfo = 10;
constexpr int kSmallestFrequencyPixels = 5;
constexpr double kSectionShade = 0.08;
constexpr double kSelectedShade = 0.04;

QFont nameFont(bool isSelected) {
    return Theme::face(11, isSelected ? QFont::DemiBold : QFont::Normal);
}

QFont figureFont() {
    return Theme::mono(9);
}

/// Fills the background; gives its colour, opaque.
QColor paintedBackground(QPainter& painter, const QRect& area, Ink ink, double opacity) {
    const QColor color = blended(Theme::color(ink, opacity), Theme::color(Ink::window));
    painter.fillRect(area, color);
    return color;
}

void paintCheckBox(QPainter& painter, const QRect& area, bool isChecked) {
    QStyleOptionButton box;
    box.rect = middleSquare(area, area.width());
    box.palette = QApplication::palette();
    box.state = QStyle::State_Enabled | (isChecked ? QStyle::State_On : QStyle::State_Off);
    QApplication::style()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &box, &painter);
}

void paintDot(QPainter& painter, const QRect& area, const SatelliteRowLook& look) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.isSelected ? Theme::color(look.color) : Theme::color(Ink::gray, 0.3));
    painter.drawEllipse(middleSquare(area, kDot));
}

/// The text, if its column cuts it.
QString ifCut(const QFont& font, const std::string& text, const QRect& column) {
    const QString whole = qText(text);
    return isCut(font, whole, column.width()) ? whole : QString();
}

}  // namespace

QSize BrowserRowDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const {
    return {0, browserRowHeight()};
}

void BrowserRowDelegate::setHovered(const QModelIndex& index, RowPart part) {
    hovered_ = index;
    hoveredPart_ = part;
}

void BrowserRowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (model_.isSection(index)) {
        paintSection(*painter, option.rect, index, option.state & QStyle::State_Open);
    } else {
        paintSatellite(*painter, option.rect, index);
    }
    if (option.state & QStyle::State_HasFocus) drawRowFocus(*painter, option.rect);
    painter->restore();
}

void BrowserRowDelegate::paintSection(QPainter& painter, const QRect& row, const QModelIndex& index,
                                      bool isOpen) const {
    const SectionLook look = model_.sectionLook(index);
    const SectionColumns columns = sectionColumns(row, look);
    const QColor background =
        paintedBackground(painter, columns.background, Ink::gray, kSectionShade);
    paintSymbol(painter, middleSquare(columns.chevron, kChevron),
                isOpen ? Symbol::chevronDown : Symbol::chevronRight, Theme::color(Ink::secondary));
    drawRowText(painter, columns.label, {qText(look.label), sectionLabelFont(), {Ink::primary}},
                background);
    drawRowText(painter, columns.count,
                {qText(countInBrackets(look.satellites)), sectionCountFont(), {Ink::secondary}},
                background);
    drawRowText(painter, columns.selected,
                {qText(selectedText(look.selected)), sectionCountFont(), {Ink::green}}, background);

    const auto button = [&](const QRect& area, const char* text, Ink ink, RowPart part) {
        QFont font = sectionButtonFont();
        font.setUnderline(hovered_ == index && hoveredPart_ == part);
        drawRowText(painter, area, {text, font, {ink}}, background);
    };
    button(columns.all, "All", Ink::blue, RowPart::all);
    button(columns.firstBar, "|", Ink::gray, RowPart::nothing);
    button(columns.none, "None", Ink::blue, RowPart::none);
    button(columns.secondBar, "|", Ink::gray, RowPart::nothing);
    button(columns.clear, "Clear", Ink::red, RowPart::clear);
    if (look.isSubscribed) {
        SwitchButton::paintPicture(painter, columns.subscription, *look.isSubscribed, true);
    }
}

void BrowserRowDelegate::paintSatellite(QPainter& painter, const QRect& row,
                                        const QModelIndex& index) const {
    const SatelliteRowLook look = model_.satelliteLook(index);
    const SatelliteColumns columns = satelliteColumns(row);
    const QColor background = paintedBackground(painter, columns.background, Ink::primary,
                                                look.isSelected ? kSelectedShade : 0);
    paintCheckBox(painter, columns.checkBox, look.isSelected);
    paintDot(painter, columns.dot, look);
    drawRowText(painter, columns.name,
                {qText(look.name), nameFont(look.isSelected), {Ink::primary}, Qt::AlignLeft, 11},
                background);
    const auto figure = [&](const QRect& area, const std::string& text, const Tint& tint) {
        drawRowText(painter, area,
                    {qText(text), figureFont(), tint, Qt::AlignRight, kSmallestFrequencyPixels},
                    background);
    };
    figure(columns.number, look.number, {Ink::secondary});
    figure(columns.age, look.age, look.ageInk);
    figure(columns.channels, channelCountText(look.channels), {Ink::orange, 0.8});
    figure(columns.frequency, look.frequency, {Ink::cyan});
    const bool isHovered = hovered_ == index && hoveredPart_ == RowPart::details;
    paintSymbol(painter, middleSquare(columns.details, kInfo), Symbol::info,
                Theme::color(isHovered ? Ink::primary : Ink::secondary));
}

RowPart BrowserRowDelegate::partAt(const QPoint& at, const QRect& row,
                                   const QModelIndex& index) const {
    return model_.isSection(index) ? sectionColumns(row, model_.sectionLook(index)).partAt(at)
                                   : satelliteColumns(row).partAt(at);
}

QString BrowserRowDelegate::helpAt(const QPoint& at, const QRect& row,
                                   const QModelIndex& index) const {
    return model_.isSection(index) ? sectionHelpAt(at, row, index)
                                   : satelliteHelpAt(at, row, index);
}

QString BrowserRowDelegate::sectionHelpAt(const QPoint& at, const QRect& row,
                                          const QModelIndex& index) const {
    const SectionLook look = model_.sectionLook(index);
    const SectionColumns columns = sectionColumns(row, look);
    switch (columns.partAt(at)) {
        case RowPart::clear:
            return tr("Remove all imported TLEs");
        case RowPart::subscription:
            return qText(subscriptionHelp(*look.isSubscribed));
        case RowPart::title:
            return ifCut(sectionLabelFont(), look.label, columns.label);
        default:
            return {};
    }
}

QString BrowserRowDelegate::satelliteHelpAt(const QPoint& at, const QRect& row,
                                            const QModelIndex& index) const {
    const SatelliteRowLook look = model_.satelliteLook(index);
    const SatelliteColumns columns = satelliteColumns(row);
    if (columns.partAt(at) == RowPart::details) return tr("Show satellite details");
    if (columns.age.contains(at)) return tr("TLE epoch age");
    if (!columns.name.contains(at)) return {};
    return ifCut(nameFont(look.isSelected), look.name, columns.name);
}

bool BrowserRowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                   const QStyleOptionViewItem& option, const QModelIndex& index) {
    if (event->type() != QEvent::ToolTip || !index.isValid()) {
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    }
    showRowHelp(*event, view, helpAt(event->pos(), option.rect, index));
    return true;
}

}  // namespace veloran
