#include "ui/browser/browser_columns.h"

#include <QFontMetrics>
#include <algorithm>

#include "ui/browser/browser_texts.h"
#include "ui/q_text.h"
#include "ui/theme.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/switch_button.h"

namespace veloran {

namespace {

constexpr int kListPadding = 4;
constexpr int kSpacing = 6;
constexpr int kTouch = kSpacing / 2;  // what a button answers to on either side of it

constexpr int kSectionPadding = 8;
constexpr int kSectionVerticalPadding = 4;
constexpr int kChevronWidth = 12;

constexpr int kRowPadding = 10;
constexpr int kCheckBox = 14;
constexpr int kDot = 8;
constexpr int kNumberWidth = 50;
constexpr int kAgeWidth = 36;
constexpr int kChannelsWidth = 28;
constexpr int kFrequencyWidth = 100;
constexpr int kDetailsWidth = 14;

/// Cuts columns off either end of a row.
class Columns {
  public:
    explicit Columns(const QRect& area) : rest_(area) {}

    QRect left(int width) {
        const QRect column(rest_.left(), rest_.top(), width, rest_.height());
        rest_.setLeft(rest_.left() + width + kSpacing);
        return column;
    }
    QRect right(int width) {
        const QRect column(rest_.right() + 1 - width, rest_.top(), width, rest_.height());
        rest_.setRight(rest_.right() - width - kSpacing);
        return column;
    }
    int room() const { return std::max(0, rest_.width()); }

  private:
    QRect rest_;
};

int widthOf(const QFont& font, const QString& text) {
    return QFontMetrics(font).horizontalAdvance(readable(text));
}

bool answers(const QRect& column, const QPoint& at) {
    return !column.isEmpty() && column.adjusted(-kTouch, 0, kTouch, 0).contains(at);
}

QRect insideList(const QRect& row) {
    return row.adjusted(kListPadding, 0, -kListPadding, 0);
}

void placeButtons(SectionColumns& columns, Columns& rest, const SectionLook& look) {
    const QFont font = sectionButtonFont();
    const int bar = widthOf(font, "|");
    if (look.isSubscribed) columns.subscription = rest.right(SwitchButton::pictureSize().width());
    if (look.canClear) {
        columns.clear = rest.right(widthOf(font, "Clear"));
        columns.secondBar = rest.right(bar);
    }
    columns.none = rest.right(widthOf(font, "None"));
    columns.firstBar = rest.right(bar);
    columns.all = rest.right(widthOf(font, "All"));
}

}  // namespace

QFont sectionLabelFont() {
    return Theme::mono(12, QFont::Bold);
}

QFont sectionButtonFont() {
    return Theme::face(9);
}

QFont sectionCountFont() {
    return Theme::mono(10);
}

int browserRowHeight() {
    return QFontMetrics(sectionLabelFont()).height() + 2 * kSectionVerticalPadding;
}

SectionColumns sectionColumns(const QRect& row, const SectionLook& look) {
    SectionColumns columns;
    columns.background = insideList(row);
    Columns rest(columns.background.adjusted(kSectionPadding, 0, -kSectionPadding, 0));
    placeButtons(columns, rest, look);

    columns.chevron = rest.left(kChevronWidth);
    const int count = widthOf(sectionCountFont(), qText(countInBrackets(look.satellites)));
    const int selected = widthOf(sectionCountFont(), qText(selectedText(look.selected)));
    const int counts = count + kSpacing + (selected > 0 ? selected + kSpacing : 0);
    const int label = widthOf(sectionLabelFont(), qText(look.label));
    columns.label = rest.left(std::clamp(rest.room() - counts, 0, label));
    columns.count = rest.left(std::min(count, rest.room()));
    columns.selected = rest.left(std::min(selected, rest.room()));
    return columns;
}

RowPart SectionColumns::partAt(const QPoint& at) const {
    if (answers(chevron.united(label), at)) return RowPart::title;
    if (answers(all, at)) return RowPart::all;
    if (answers(none, at)) return RowPart::none;
    if (answers(clear, at)) return RowPart::clear;
    if (answers(subscription, at)) return RowPart::subscription;
    return RowPart::nothing;
}

SatelliteColumns satelliteColumns(const QRect& row) {
    SatelliteColumns columns;
    columns.background = insideList(row);
    Columns rest(columns.background.adjusted(kRowPadding, 0, -kRowPadding, 0));
    columns.checkBox = rest.left(kCheckBox);
    columns.dot = rest.left(kDot);
    columns.details = rest.right(kDetailsWidth);
    columns.frequency = rest.right(kFrequencyWidth);
    columns.channels = rest.right(kChannelsWidth);
    columns.age = rest.right(kAgeWidth);
    columns.number = rest.right(kNumberWidth);
    columns.name = rest.left(rest.room());
    return columns;
}

RowPart SatelliteColumns::partAt(const QPoint& at) const {
    if (answers(checkBox, at)) return RowPart::checkBox;
    if (answers(details, at)) return RowPart::details;
    return RowPart::nothing;
}

}  // namespace veloran
