#include "ui/quick_list/satellite_list_view.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/commands.h"
#include "ui/quick_list/preset_selections.h"
#include "ui/quick_list/quick_row_delegate.h"
#include "ui/theme.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/plain_rows.h"
#include "ui/widgets/search_field.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr int kPadding = 12;

}  // namespace

QuickListRows::QuickListRows(QuickListModel& model, QWidget* parent)
    : QListView(parent), model_(model) {
    setObjectName("quickList");
    setAccessibleName(tr("Satellites"));
    setAccessibleDescription(tr("Space selects the satellite or takes it out."));
    makePlainRows(*this);
    setUniformItemSizes(true);
    setModel(&model);
    setItemDelegate(new QuickRowDelegate(model, this));
}

void QuickListRows::refresh() {
    auto looks = looksInSight();
    if (looks == shown_) return;
    shown_ = std::move(looks);
    viewport()->update();
}

void QuickListRows::enter() {
    setFocus();
    if (!currentIndex().isValid()) setCurrentIndex(model_.index(0));
}

std::vector<QuickListLook> QuickListRows::looksInSight() const {
    std::vector<QuickListLook> looks;
    const QRect sight = viewport()->rect();
    for (QModelIndex index = indexAt(sight.topLeft());
         index.isValid() && visualRect(index).top() <= sight.bottom();
         index = index.siblingAtRow(index.row() + 1)) {
        looks.push_back(model_.look(index.row()));
    }
    return looks;
}

SatelliteListView::SatelliteListView(std::shared_ptr<AppState> state, QWidget* window)
    : Sheet(tr("Satellites"), window),
      state_(std::move(state)),
      model_(new QuickListModel(state_, this)),
      search_(new SearchField(tr("Search name or NORAD ID..."))),
      rows_(new QuickListRows(*model_)) {
    setObjectName("quickListSheet");
    setMinimumSize(350, 400);
    search_->setObjectName("quickListSearch");
    connect(search_, &SearchField::textChanged, model_, &QuickListModel::setSearch);
    connect(search_, &SearchField::left, rows_, &QuickListRows::enter);

    auto* padded = new QVBoxLayout;
    padded->setContentsMargins(kPadding, 0, kPadding, 8);
    padded->setSpacing(8);
    padded->addWidget(search_);
    padded->addWidget(makePresets());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeHeader());
    column->addLayout(padded);
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(rows_, 1);

    connect(this, &QDialog::finished, this, [this] { state_->showSatelliteList = false; });
    search_->setFocus();
    refresh();
}

QWidget* SatelliteListView::makeHeader() {
    count_ = new ValueLabel({11, QFont::Normal, Ink::secondary, 1, false});
    count_->setObjectName("selectedCount");
    auto* done = new QPushButton(tr("Done"));
    done->setObjectName("closeQuickList");
    done->setAccessibleName(done->text());
    done->setDefault(true);
    connect(done, &QPushButton::clicked, this, &QDialog::reject);

    auto* header = new QWidget;
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(kPadding, 8, kPadding, 8);
    row->setSpacing(8);
    row->addWidget(new ValueLabel({14, QFont::Bold, Ink::primary, 1, false}, tr("Satellites")));
    row->addWidget(count_);
    row->addStretch();
    row->addWidget(done);
    return header;
}

QWidget* SatelliteListView::makePresets() {
    auto* presets = new QWidget;
    auto* row = new QHBoxLayout(presets);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    const auto presetButton = [this, row](const QString& text, const char* name, auto action) {
        auto* button = new QPushButton(text);
        button->setObjectName(name);
        button->setAccessibleName(text);
        button->setFont(Theme::face(10));
        connect(button, &QPushButton::clicked, this, [this, action] { action(*state_); });
        row->addWidget(button);
    };
    presetButton(tr("Amateur LEO"), "presetAmateur",
                 [](AppState& state) { selectByCategory(state, "amateur"); });
    presetButton(tr("Stations"), "presetStations",
                 [](AppState& state) { selectByCategory(state, "stations"); });
    presetButton(tr("All"), "presetAll", selectAll);
    presetButton(tr("None"), "presetNone", deselectAll);
    row->addStretch();
    return presets;
}

void SatelliteListView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel) && !search_->text().isEmpty()) return search_->clear();
    Sheet::keyPressEvent(event);
}

void SatelliteListView::refresh() {
    if (isVisible() && !state_->showSatelliteList) {
        reject();
        return;
    }
    count_->setText(tr("%1 selected").arg(state_->selectedSatelliteIds->size()));
    model_->refresh();
    rows_->refresh();
}

}  // namespace veloran
