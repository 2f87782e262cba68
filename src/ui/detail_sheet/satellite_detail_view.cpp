#include "ui/detail_sheet/satellite_detail_view.h"

#include <QGridLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "core/pass_info.h"
#include "core/satellite_preferences.h"
#include "ui/detail_sheet/transmitter_rows.h"
#include "ui/formats.h"
#include "ui/q_text.h"
#include "ui/satellite_texts.h"
#include "ui/theme.h"
#include "ui/widgets/color_dot.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/selectable_value.h"
#include "ui/widgets/text_box.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr int kPadding = 12;
constexpr int kLabelWidth = 120;

constexpr TextStyle kTitle{13, QFont::Bold, Ink::secondary};
constexpr TextStyle kGrid{12};
constexpr TextStyle kGridLabel{12, QFont::Normal, Ink::secondary};
constexpr TextStyle kNote{11, QFont::Normal, Ink::secondary, 1, false};

ValueLabel* makeLabel(const TextStyle& style, const char* name) {
    auto* label = new ValueLabel(style);
    label->setObjectName(name);
    label->setElastic();
    return label;
}

/// The frame of a section: what follows the title goes into the layout.
QVBoxLayout* addSection(QVBoxLayout& sections, ValueLabel* title) {
    auto* column = new QVBoxLayout;
    column->setSpacing(6);
    column->addWidget(title);
    sections.addLayout(column);
    return column;
}

SelectableValue* makeValue(const TextStyle& style, const QString& name, std::string_view text) {
    auto* value = new SelectableValue(style, {});
    value->setObjectName(name);
    value->setAccessibleName(name);
    value->setElastic();
    value->setValue(text);
    return value;
}

SelectableValue* addGridRow(QGridLayout& grid, const std::string& label, std::string_view text) {
    const int row = grid.rowCount();
    SelectableValue* value = makeValue(kGrid, qText(label), text);
    grid.addWidget(new ValueLabel(kGridLabel, qText(label)), row, 0, Qt::AlignTop);
    grid.addWidget(value, row, 1, Qt::AlignTop);
    return value;
}

QGridLayout* makeGrid() {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(8);
    grid->setVerticalSpacing(6);
    grid->setColumnMinimumWidth(0, kLabelWidth);
    grid->setColumnStretch(1, 1);
    return grid;
}

}  // namespace

SatelliteDetailView::SatelliteDetailView(std::shared_ptr<AppState> state, SatellitePtr satellite,
                                         QWidget* window)
    : Sheet(qText(satellite->name), window),
      state_(std::move(state)),
      satellite_(std::move(satellite)) {
    setObjectName("satelliteDetail");
    setMinimumSize(520, 600);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(new Divider(Qt::Horizontal));
    makeContents();
    refresh();
}

void SatelliteDetailView::makeContents() {
    epoch_ = nullptr;
    shownPasses_.reset();
    header_ = makeHeader();
    sections_ = makeSections();
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->insertWidget(0, header_);
    column->addWidget(sections_, 1);
}

void SatelliteDetailView::followReload() {
    const auto& all = state_->satellites.get();
    const auto now = std::ranges::find_if(
        all, [this](const SatellitePtr& body) { return body->id == satellite_->id; });
    if (now == all.end() || *now == satellite_) return;
    satellite_ = *now;
    setWindowTitle(qText(satellite_->name));
    const int scrolled = sections_->verticalScrollBar()->value();
    delete header_;
    delete sections_;
    makeContents();
    layout()->activate();
    sections_->widget()->adjustSize();
    sections_->verticalScrollBar()->setValue(scrolled);
    findChild<QPushButton*>("closeDetail")->setFocus();
}

QWidget* SatelliteDetailView::makeHeader() {
    auto* dot = new ColorDot(14);
    dot->setColor(Theme::color(SatelliteColorPalette::color(satellite_->id)));
    auto* name = makeLabel({15}, "detailName");
    name->setText(satellite_->name);
    auto* norad = new ValueLabel({10, QFont::Normal, Ink::secondary});
    norad->setObjectName("detailNorad");
    norad->setText(noradText(satellite_->id));
    auto* sources = makeLabel({10, QFont::Normal, Ink::secondary}, "detailSources");
    sources->setText(sourcesHelp(satellite_->sources));
    auto* close = new QPushButton(tr("Close"));
    close->setObjectName("closeDetail");
    close->setAccessibleName(close->text());
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    auto* origin = new QHBoxLayout;
    origin->setSpacing(8);
    origin->addWidget(norad);
    origin->addWidget(sources, 1);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(name);
    texts->addLayout(origin);
    auto* header = new QWidget;
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    row->setSpacing(10);
    row->addWidget(dot);
    row->addLayout(texts, 1);
    row->addWidget(close);
    return header;
}

QScrollArea* SatelliteDetailView::makeSections() {
    auto* content = new QWidget;
    auto* sections = new QVBoxLayout(content);
    sections->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    sections->setSpacing(14);
    addElements(*sections);
    if (satellite_->tle) addLines(*sections);
    addTransmitters(*sections);
    addPasses(*sections);
    sections->addStretch();

    auto* area = new QScrollArea;
    area->setObjectName("detailSections");
    area->setAccessibleName(tr("Details"));
    area->setFrameShape(QFrame::NoFrame);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setWidgetResizable(true);
    area->setWidget(content);
    return area;
}

void SatelliteDetailView::addElements(QVBoxLayout& sections) {
    QVBoxLayout* section = addSection(sections, new ValueLabel(kTitle, tr("ORBITAL ELEMENTS")));
    if (!satellite_->tle) {
        auto* none = makeLabel(kNote, "noElements");
        none->setText(tr("No TLE data available"));
        section->addWidget(none);
        return;
    }
    QGridLayout* grid = makeGrid();
    for (const auto& [label, value] : orbitalElements(*satellite_->tle)) {
        addGridRow(*grid, label, value);
    }
    section->addLayout(grid);
}

void SatelliteDetailView::addLines(QVBoxLayout& sections) {
    auto* title = new ValueLabel(kTitle, tr("TLE DATA"));
    title->setObjectName("lines");
    QVBoxLayout* section = addSection(sections, title);
    QGridLayout* grid = makeGrid();
    epoch_ = addGridRow(*grid, "Epoch", {});
    section->addLayout(grid);
    for (const auto& [name, line] : {std::pair(tr("Line 1"), &satellite_->tle->line1),
                                     {tr("Line 2"), &satellite_->tle->line2}}) {
        section->addWidget(
            new TextBox(makeValue({10}, name, *line), TextBox::Outline::whileFocused));
    }
}

void SatelliteDetailView::addTransmitters(QVBoxLayout& sections) {
    transmittersTitle_ = makeLabel(kTitle, "transmittersTitle");
    noTransmitters_ = makeLabel(kNote, "noTransmitters");
    noTransmitters_->setText(tr("No transmitters listed for this satellite"));
    transmitters_ = new TransmitterRows;
    QVBoxLayout* section = addSection(sections, transmittersTitle_);
    section->addWidget(noTransmitters_);
    section->addWidget(transmitters_);
    showTransmitters();
}

void SatelliteDetailView::addPasses(QVBoxLayout& sections) {
    passesTitle_ = makeLabel(kTitle, "passesTitle");
    noPasses_ = makeLabel(kNote, "noPasses");
    noPasses_->setText(tr("No passes predicted in the current window"));
    QVBoxLayout* section = addSection(sections, passesTitle_);
    section->addWidget(noPasses_);
    for (std::size_t i = 0; i < kToldPasses; ++i) {
        passRows_[i] = makePassRow(i + 1);
        section->addWidget(passRows_[i].row);
    }
    morePasses_ = makeLabel({10, QFont::Normal, Ink::secondary, 1, false}, "morePasses");
    section->addWidget(morePasses_);
}

SatelliteDetailView::PassRow SatelliteDetailView::makePassRow(std::size_t number) {
    auto* time = new ValueLabel({10});
    time->setWidthRange(100, 100);
    auto* highest = new ValueLabel({10});
    highest->reserve(qText(maxText(90)));
    auto* duration = new ValueLabel({10, QFont::Normal, Ink::secondary});
    duration->setWidthRange(60, 60);

    auto* row = new QWidget;
    row->setObjectName(QString("pass%1").arg(number));
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 2, 0, 2);
    line->setSpacing(10);
    line->addWidget(time);
    line->addWidget(highest);
    line->addWidget(duration);
    line->addStretch();
    return {row, time, highest, duration};
}

void SatelliteDetailView::refresh() {
    followReload();
    if (epoch_) {
        const TLEData& tle = *satellite_->tle;
        epoch_->setValue(tleEpochString(tle.epochYear, tle.epochDays, state_->now()));
    }
    if (transmitters_->transmitters() != satellite_->transmitters) showTransmitters();
    if (shownPasses_ != satellite_->passes) showPasses();
}

void SatelliteDetailView::showTransmitters() {
    const auto& list = satellite_->transmitters;
    transmittersTitle_->setText(tr("TRANSMITTERS (%1)").arg(list.size()));
    noTransmitters_->setVisible(list.empty());
    transmitters_->setVisible(!list.empty());
    transmitters_->setTransmitters(list);
}

void SatelliteDetailView::showPasses() {
    shownPasses_ = satellite_->passes;
    const PassList& list = *shownPasses_;
    passesTitle_->setText(tr("UPCOMING PASSES (%1)").arg(list.size()));
    noPasses_->setVisible(list.empty());
    for (std::size_t i = 0; i < kToldPasses; ++i) {
        const PassRow& shown = passRows_[i];
        shown.row->setVisible(i < list.size());
        if (i >= list.size()) continue;
        const PredictedPass& pass = list[i];
        shown.time->setText(passRowTime(pass.riseTime));
        shown.highest->setText(maxText(pass.maxElevation));
        shown.highest->setTextStyle({10, QFont::Normal, maxColor(pass.maxElevation)});
        shown.duration->setText(durationText(pass.setTime - pass.riseTime));
    }
    const auto more = morePasses(list.size());
    morePasses_->setVisible(more.has_value());
    morePasses_->setText(more.value_or(""));
}

}  // namespace veloran
