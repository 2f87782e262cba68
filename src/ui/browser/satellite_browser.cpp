#include "ui/browser/satellite_browser.h"

#include <QDragEnterEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/browser/browser_model.h"
#include "ui/browser/browser_texts.h"
#include "ui/browser/browser_tree.h"
#include "ui/browser/tracked_list.h"
#include "ui/commands.h"
#include "ui/detail_sheet/satellite_detail_view.h"
#include "ui/import/local_files.h"
#include "ui/import/tle_import_sheet.h"
#include "ui/q_text.h"
#include "ui/satellite_texts.h"
#include "ui/state_refresher.h"
#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/mini_button.h"
#include "ui/widgets/search_field.h"
#include "ui/widgets/text_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr QSize kDefaultSize{820, 620};
constexpr QSize kLeastSize{700, 500};
constexpr int kLeastLeft = 400;
constexpr int kIdealLeft = 500;
constexpr int kLeastRight = 220;
constexpr int kIdealRight = 260;
constexpr int kSearchWidth = 320;
constexpr int kHeaderPixels = 11;
constexpr int kNotePixels = 12;
constexpr int kNoteMargin = 14;

bool hasElements(const AppState& state) {
    return std::ranges::any_of(state.satellites.get(), [](const SatellitePtr& satellite) {
        return satellite->bodyKind == BodyKind::sgp4;
    });
}

std::string noteOf(AppState& state) {
    const Downloads& downloads = state.downloads;
    std::vector<GroupDownload> groups;
    for (const auto& category : state.elements().categories()) {
        if (!state.subscribedCategories->contains(category.name)) continue;
        const auto known = downloads.outcomes.find(category.name);
        groups.push_back(
            {category.description, downloads.awaited.contains(category.name),
             known == downloads.outcomes.end() ? std::nullopt : std::optional(known->second)});
    }
    return emptyBrowserText(state.isLoadingTLEs, groups);
}

/// Heading of a panel: 10 points at the sides, 4 above and below. Its texts stand on one baseline,
/// which is that of the panel beside it too.
QHBoxLayout* makeHeader(const QString& title, ValueLabel* count) {
    auto* label = new ValueLabel({9, QFont::Black, Ink::secondary}, title);
    for (ValueLabel* text : {label, count}) {
        text->alignToFirstBaselineOf(Theme::mono(kHeaderPixels));
    }
    auto* row = new QHBoxLayout;
    row->setContentsMargins(10, 4, 10, 4);
    row->setSpacing(6);
    row->addWidget(label);
    row->addWidget(count);
    row->addStretch();
    return row;
}

QVBoxLayout* makeColumn(QWidget* panel) {
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    return column;
}

}  // namespace

SatelliteBrowser::SatelliteBrowser(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent, Qt::Window),
      state_(std::move(state)),
      refresher_(new StateRefresher(state_->objectWillChange, state_->loop(), this)),
      model_(new BrowserModel(state_, this)),
      trackedModel_(new TrackedModel(this)) {
    setObjectName("satelliteBrowser");
    setWindowTitle(tr("Satellite Browser"));
    setWindowIcon(applicationIcon());
    setMinimumSize(kLeastSize);
    resize(kDefaultSize);
    setAcceptDrops(true);

    auto* panels = new QSplitter(Qt::Horizontal);
    panels->setObjectName("browserPanels");
    panels->setChildrenCollapsible(false);
    panels->setHandleWidth(1);
    QVBoxLayout* column = makeColumn(this);
    column->addWidget(makeToolbar());
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(panels, 1);
    panels->addWidget(makeLeftPanel());
    panels->addWidget(makeRightPanel());
    panels->setSizes({kIdealLeft, kIdealRight});
    panels->setStretchFactor(0, 1);
    panels->setStretchFactor(1, 0);

    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, search_,
            [this] { search_->setFocus(Qt::ShortcutFocusReason); });
    connect(refresher_, &StateRefresher::refresh, this, [this] {
        if (isVisible()) refresh();
    });
    connect(&everyMinute_, &LoopTimer::timeout, tree_, &BrowserTree::updateVisibleRows);
    everyMinute_.start();
    refreshAvailable();
    refreshTracked();
    search_->setFocus();
}

QWidget* SatelliteBrowser::makeToolbar() {
    auto* toolbar = new QWidget;
    search_ = new SearchField(tr("Search name or NORAD ID…"));
    search_->setObjectName("browserSearch");
    search_->setMaximumWidth(kSearchWidth);
    connect(search_, &SearchField::textChanged, this, &SatelliteBrowser::search);

    const TextStyle plain{13, QFont::Normal, Ink::primary, 1, false};
    auto* import = new MiniButton(Symbol::importTray, 11, tr("Import TLE"), plain, 3);
    import->setObjectName("importTLE");
    import->setToolTip(tr("Paste or load TLE data for satellites not in CelesTrak"));
    connect(import, &QAbstractButton::clicked, this, [this] { showImportSheet(); });
    auto* refresh = new MiniButton(Symbol::arrowClockwise, 11, tr("Refresh"), plain, 3);
    refresh->setObjectName("refreshTLEs");
    refresh->setToolTip(tr("Re-download all TLEs from CelesTrak"));
    connect(refresh, &QAbstractButton::clicked, this, [this] { state_->refreshTLEs(); });

    auto* row = new QHBoxLayout(toolbar);
    row->setContentsMargins(8, 8, 8, 8);
    row->setSpacing(8);
    row->addWidget(search_, 1);
    row->addStretch();
    row->addWidget(import);
    row->addWidget(refresh);
    return toolbar;
}

QWidget* SatelliteBrowser::makeLeftPanel() {
    auto* panel = new QWidget;
    panel->setMinimumWidth(kLeastLeft);
    count_ = new ValueLabel({kHeaderPixels, QFont::Normal, Ink::secondary});
    count_->setObjectName("availableCount");
    age_ = new ValueLabel({kHeaderPixels});
    age_->setObjectName("elementAge");
    tree_ = new BrowserTree(*model_);
    connectTree();
    note_ = new QLabel;
    note_->setObjectName("browserNote");
    note_->setTextFormat(Qt::PlainText);
    note_->setFont(Theme::face(kNotePixels));
    note_->setForegroundRole(QPalette::PlaceholderText);
    note_->setWordWrap(true);
    note_->setMargin(kNoteMargin);

    QHBoxLayout* header = makeHeader(tr("AVAILABLE"), count_);
    header->addWidget(age_);
    QVBoxLayout* column = makeColumn(panel);
    column->addLayout(header);
    column->addWidget(note_);
    column->addWidget(tree_, 1);
    return panel;
}

QWidget* SatelliteBrowser::makeRightPanel() {
    auto* panel = new QWidget;
    panel->setMinimumWidth(kLeastRight);
    panel->setBackgroundRole(QPalette::Base);
    panel->setAutoFillBackground(true);
    trackedCount_ = new ValueLabel({kHeaderPixels, QFont::Normal, Ink::secondary, 1, false});
    trackedCount_->setObjectName("trackedCount");
    clear_ = new TextButton(tr("Clear"), {9, QFont::Normal, Ink::red, 1, false});
    clear_->setObjectName("clearTracked");
    clear_->setAccessibleName(tr("Clear the tracked list"));
    connect(clear_, &QAbstractButton::clicked, this, [this] { deselectAll(*state_); });
    auto* list = new TrackedList(*trackedModel_);
    connect(list, &TrackedList::removed, this,
            [this](const SatellitePtr& satellite) { state_->toggleSatellite(satellite); });
    auto* note = new ValueLabel({9, QFont::Normal, Ink::secondary, 1, false},
                                tr("These satellites appear on the SkyTrack timeline."));
    note->setObjectName("trackedNote");
    note->setElastic();

    QHBoxLayout* header = makeHeader(tr("TRACKED"), trackedCount_);
    header->addWidget(clear_);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(8, 8, 8, 8);
    foot->addWidget(note);
    QVBoxLayout* column = makeColumn(panel);
    column->addLayout(header);
    column->addWidget(list, 1);
    column->addLayout(foot);
    return panel;
}

void SatelliteBrowser::connectTree() {
    connect(tree_, &BrowserTree::toggled, this,
            [this](const SatellitePtr& satellite) { state_->toggleSatellite(satellite); });
    connect(tree_, &BrowserTree::detailsRequested, this, &SatelliteBrowser::showDetails);
    connect(tree_, &BrowserTree::selectionRequested, this,
            [this](const QModelIndex& section, bool selected) {
                setAll(model_->section(section).sats, selected);
            });
    connect(tree_, &BrowserTree::clearRequested, this, &SatelliteBrowser::clearImported);
    connect(tree_, &BrowserTree::removalRequested, this, &SatelliteBrowser::removeImported);
    connect(tree_, &BrowserTree::typed, search_, &SearchField::type);
    connect(search_, &SearchField::left, tree_, &BrowserTree::enter);
    connect(tree_, &BrowserTree::subscriptionToggled, this, &SatelliteBrowser::toggleSubscription);
}

void SatelliteBrowser::refresh() {
    if (model_->refresh()) refreshTracked();
    refreshAvailable();
}

void SatelliteBrowser::refreshAvailable() {
    count_->setText(std::to_string(model_->filteredCount()));
    age_->setText(elementAgeText(state_->tleAgeString()));
    age_->setTextStyle({kHeaderPixels, QFont::Normal, elementAgeColor(state_->tleAge)});
    showNote();
    if (isVisible()) tree_->updateVisibleRows();
}

void SatelliteBrowser::showNote() {
    const bool hasBegun = state_->isLoadingTLEs || !state_->satellites->empty();
    const bool isWanted = hasBegun && !hasElements(*state_);
    const QString text = isWanted ? qText(noteOf(*state_)) : QString();
    if (text == note_->text() && note_->isHidden() == text.isEmpty()) return;
    note_->setText(text);
    note_->setVisible(!text.isEmpty());
}

void SatelliteBrowser::refreshTracked() {
    trackedModel_->setSatellites(sortedByName(state_->selectedSatellites()));
    const std::size_t count = state_->selectedSatelliteIds->size();
    trackedCount_->setText(countInBrackets(count));
    clear_->setVisible(count > 0);
}

void SatelliteBrowser::search(const QString& text) {
    model_->setSearch(text.toStdString());
    tree_->showFound();
    refreshAvailable();
}

void SatelliteBrowser::setAll(const std::vector<SatellitePtr>& satellites, bool selected) {
    state_->toggleSatellites(withOtherSelection(satellites, selected));
}

void SatelliteBrowser::toggleSubscription(const std::string& key) {
    subscribe(*state_, key, !state_->subscribedCategories->contains(key));
}

void SatelliteBrowser::clearImported() {
    state_->clearImported([state = state_.get()] { state->loadData(); });
}

void SatelliteBrowser::removeImported(const SatellitePtr& satellite) {
    state_->removeImported(satellite->id, [state = state_.get()] { state->loadData(); });
}

void SatelliteBrowser::showDetails(const SatellitePtr& satellite) {
    auto* sheet = new SatelliteDetailView(state_, satellite, this);
    connect(refresher_, &StateRefresher::refresh, sheet, &SatelliteDetailView::refresh);
    sheet->present();
}

TLEImportSheet& SatelliteBrowser::showImportSheet() {
    if (!importSheet_) {
        importSheet_ = new TLEImportSheet(state_, this);
        importSheet_->present();
    }
    return *importSheet_;
}

void SatelliteBrowser::showEvent(QShowEvent* event) {
    refresh();
    QWidget::showEvent(event);
}

void SatelliteBrowser::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel) && !search_->text().isEmpty()) return search_->clear();
    QWidget::keyPressEvent(event);
}

void SatelliteBrowser::dragEnterEvent(QDragEnterEvent* event) {
    if (!localFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void SatelliteBrowser::dropEvent(QDropEvent* event) {
    const QStringList files = localFiles(*event->mimeData());
    if (files.isEmpty()) return;
    event->acceptProposedAction();
    showImportSheet().importFiles(files);
}

}  // namespace veloran
