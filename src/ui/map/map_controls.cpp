#include "ui/map/map_controls.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <cmath>

#include "ui/map/map_texts.h"
#include "ui/map/segmented_picker.h"
#include "ui/q_text.h"
#include "ui/theme.h"
#include "ui/widgets/symbol_view.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr const char* kStyleKey = "mapStyle";
constexpr const char* kHoursKey = "mapTrackHours";
constexpr double kMostHours = 4;
constexpr double kHourStep = 0.5;

double storedHours(const SettingsStore& settings) {
    const double hours = settings.number(kHoursKey);
    return hours >= 0 && hours <= kMostHours ? hours : 0;
}

/// A rounded plate that lets the map show through a little.
class Plate final : public QWidget {
  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Theme::color(Ink::window, 0.85));
        painter.drawRoundedRect(rect(), 4, 4);
    }
};

}  // namespace

MapControls::MapControls(SettingsStore& settings, QWidget* parent)
    : QWidget(parent),
      settings_(settings),
      style_(mapStyleNamed(settings.text(kStyleKey).value_or(""))),
      hours_(storedHours(settings)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(makeTrackControl(), 0, Qt::AlignRight);
    column->addWidget(makeStylePicker(), 0, Qt::AlignRight);
}

void MapControls::resizeEvent(QResizeEvent*) {
    setMask(childrenRegion());  // between the controls the pointer reaches the map
}

QWidget* MapControls::makeTrackControl() {
    auto* plate = new Plate;
    plate->setObjectName("trackControl");
    plate->setToolTip(tr("Show satellite ground track from (now−X hours) to (now+X hours)"));
    auto* row = new QHBoxLayout(plate);
    row->setContentsMargins(6, 3, 6, 3);
    row->setSpacing(4);
    row->addWidget(new SymbolView(Symbol::arrowLeftAndRight, 9, Ink::secondary));

    slider_ = new QSlider(Qt::Horizontal);
    slider_->setObjectName("trackHours");
    slider_->setAccessibleName(tr("Hours of ground track before and after now"));
    slider_->setFixedWidth(100);
    slider_->setRange(0, static_cast<int>(kMostHours / kHourStep));
    slider_->setPageStep(2);
    slider_->setValue(static_cast<int>(std::lround(hours_ / kHourStep)));
    connect(slider_, &QSlider::valueChanged, this,
            [this](int steps) { setHours(steps * kHourStep); });
    row->addWidget(slider_);

    hoursText_ = new ValueLabel({9, QFont::Normal, Ink::secondary});
    hoursText_->setObjectName("trackHoursText");
    hoursText_->setFixedWidth(38);
    hoursText_->setAlignment(Qt::AlignRight);
    row->addWidget(hoursText_);
    showHours();
    return plate;
}

SegmentedPicker* MapControls::makeStylePicker() {
    QStringList labels;
    for (const MapStyle style : kMapStyles) labels.append(qText(mapStyleLabel(style)));
    auto* picker = new SegmentedPicker(labels);
    picker->setObjectName("mapStyle");
    picker->setAccessibleName(tr("Style of the map"));
    picker->setFixedWidth(200);
    for (int i = 0; i < labels.size(); ++i) {
        picker->segment(i).setObjectName("mapStyle." + qText(mapStyleName(kMapStyles[i])));
    }
    picker->choose(static_cast<int>(style_));
    connect(picker, &SegmentedPicker::picked, this, [this](int index) {
        if (kMapStyles[index] == style_) return;
        style_ = kMapStyles[index];
        settings_.set(kStyleKey, std::string(mapStyleName(style_)));
        emit mapStyleChanged();
    });
    return picker;
}

void MapControls::setHours(double hours) {
    hours_ = hours;
    settings_.set(kHoursKey, hours);
    showHours();
    emit extendedTrackHoursChanged();
}

void MapControls::showHours() {
    const std::string text = trackHoursText(hours_);
    hoursText_->setText(text);
    slider_->setAccessibleDescription(qText(text));  // its value counts half hours
}

}  // namespace veloran
