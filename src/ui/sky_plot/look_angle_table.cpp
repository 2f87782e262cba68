#include "ui/sky_plot/look_angle_table.h"

#include <QFontMetrics>
#include <algorithm>

#include "ui/q_text.h"
#include "ui/sky_plot/live_look.h"
#include "ui/theme.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

/// Characters of "00:00:00 local": only values of the Sun are wider.
constexpr qsizetype kUsualWidest = 14;

TextStyle textStyle(int pixels, Ink ink) {
    return {.pixels = pixels, .weight = QFont::Medium, .ink = ink};
}

}  // namespace

LookAngleTable::LookAngleTable(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent),
      state_(std::move(state)),
      divider_(new Divider(Qt::Horizontal, this)),
      widest_(kUsualWidest) {
    setObjectName("skyTable");
    setAccessibleName(tr("Pass and look angles"));
    for (std::size_t i = 0; i < kTableRows; ++i) {
        labels_[i] =
            new ValueLabel(textStyle(pixels_, Ink::secondary), qText(kRowNames[i].label), this);
        values_[i] = new ValueLabel(textStyle(pixels_, rows_[i].ink), qText(rows_[i].text), this);
        values_[i]->setObjectName(kRowNames[i].objectName);
        values_[i]->setAccessibleName(tr(kRowNames[i].spoken));
    }
    refresh();
    showNow();
}

FaceMetrics LookAngleTable::measure(int pixels) const {
    const QFontMetrics metrics(Theme::mono(pixels, QFont::Medium));
    int widestLabel = 0;
    for (const RowName& name : kRowNames) {
        widestLabel = std::max(widestLabel, metrics.horizontalAdvance(qText(name.label)));
    }
    return {metrics.height(), widestLabel, metrics.horizontalAdvance(QString(widest_, '0'))};
}

void LookAngleTable::arrange(const TableLayout& layout) {
    pixels_ = layout.pixels;
    for (std::size_t i = 0; i < kTableRows; ++i) {
        const int top = layout.rowTop(static_cast<int>(i));
        labels_[i]->setTextStyle(textStyle(pixels_, Ink::secondary));
        values_[i]->setTextStyle(textStyle(pixels_, rows_[i].ink));
        labels_[i]->setGeometry(layout.sidePadding, top, layout.labelWidth, layout.lineHeight);
        values_[i]->setGeometry(layout.valueLeft(), top, layout.valueWidth, layout.lineHeight);
    }
    divider_->setGeometry(layout.sidePadding, layout.dividerTop(),
                          layout.width() - 2 * layout.sidePadding, divider_->height());
}

void LookAngleTable::refresh() {
    const auto& pass = state_->selectedPass.get();
    const auto id = pass ? std::optional(pass->id) : std::nullopt;
    const SatellitePtr satellite = plottedSatellite(*state_);
    if (id == shownPass_ && satellite == shownSatellite_) return;
    shownPass_ = id;
    shownSatellite_ = satellite;
    showNow();
}

void LookAngleTable::showNow() {
    const Instant now = state_->now();
    rows_ = lookAngleRows(state_->selectedPass.get(), now, liveAzEl(*state_, now),
                          liveAzEl(*state_, now, 1));
    qsizetype widest = kUsualWidest;
    for (std::size_t i = 0; i < kTableRows; ++i) {
        values_[i]->setTextStyle(textStyle(pixels_, rows_[i].ink));
        values_[i]->setText(rows_[i].text);
        widest = std::max(widest, values_[i]->text().size());
    }
    if (widest == widest_) return;
    widest_ = widest;
    emit widestChanged();
}

}  // namespace veloran
