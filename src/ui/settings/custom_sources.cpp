#include "ui/settings/custom_sources.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "base/unique_id.h"
#include "ui/commands.h"
#include "ui/q_text.h"
#include "ui/settings/field_mark.h"
#include "ui/settings/form_controls.h"
#include "ui/settings/source_texts.h"
#include "ui/widgets/switch_button.h"
#include "ui/widgets/symbol_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr int kSpacing = 4;

QHBoxLayout* makeRowLayout(QWidget* area) {
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    return row;
}

QVBoxLayout* makeColumnLayout(QWidget* area, int spacing) {
    auto* column = new QVBoxLayout(area);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

ValueLabel* makeLabel(const QString& text, int pixels, Ink ink = Ink::secondary) {
    return new ValueLabel({pixels, QFont::Normal, ink, 1, false}, text);
}

/// The name over the address, which is cut in its middle.
QWidget* makeCaption(const UserTLESource& source) {
    auto* area = new QWidget;
    auto* name = makeLabel(qText(source.name), 11, Ink::primary);
    name->setElastic();
    auto* url = makeLabel(qText(source.url), 9);
    url->setElastic();
    url->setElideMode(Qt::ElideMiddle);
    auto* column = makeColumnLayout(area, 1);
    column->addWidget(name);
    column->addWidget(url);
    return area;
}

bool isWebAddress(const QString& text) {
    const QUrl url(text, QUrl::TolerantMode);
    return url.isValid() && (url.scheme() == "http" || url.scheme() == "https") &&
           !url.host().isEmpty();
}

/// The control that Tab leaves for this one. A widget without focus has no place in the order.
QWidget* tabStopBefore(const QWidget& control) {
    QWidget* before = control.previousInFocusChain();
    while (before != &control && !(before->focusPolicy() & Qt::TabFocus)) {
        before = before->previousInFocusChain();
    }
    return before;
}

}  // namespace

CustomSources::CustomSources(std::shared_ptr<AppState> state) : state_(std::move(state)) {
    auto* column = makeColumnLayout(this, kSpacing);
    column->setContentsMargins(0, 2, 0, 4);
    sources_ = state_->userSources().load();
    column->addWidget(makeRowsArea());
    showRows();
    column->addWidget(makeLabel(tr("Add a custom URL source:"), 10));
    column->addWidget(makeAddRow());
    column->addWidget(refusal_->note());
    column->addWidget(makePresets());
    showSubscriptions();
    enableButtons();
}

QWidget* CustomSources::makeRowsArea() {
    auto* area = new QWidget;
    column_ = makeColumnLayout(area, kSpacing);
    return area;
}

QWidget* CustomSources::makeAddRow() {
    name_ =
        makeField({"newSourceName", tr("Name of a new source")}, tr("Name (e.g. CSN)"), 120, 10);
    url_ = makeField({"newSourceURL", tr("Address of a new source")}, "https://…", 0, 10);
    add_ = makeButton({"addSource", tr("Add custom URL source")}, tr("Add"), 10);
    connect(name_, &QLineEdit::textChanged, this, &CustomSources::enableButtons);
    connect(url_, &QLineEdit::textChanged, this, &CustomSources::enableButtons);
    connect(add_, &QPushButton::clicked, this, &CustomSources::addNewUserSource);
    for (QLineEdit* field : {name_, url_}) {
        actOnReturn(*field, [this] { addNewUserSource(); });
    }
    refusal_ = new FieldMark(*url_);
    refusal_->note()->hide();
    connect(url_, &QLineEdit::textChanged, this, [this] { refuse({}); });
    return inRow({name_, url_, add_}, 6);
}

QWidget* CustomSources::makePresets() {
    auto* area = new QWidget;
    auto* row = makeRowLayout(area);
    row->addWidget(makeLabel(tr("Presets:"), 9));
    for (const auto& preset : state_->presetSources()) {
        const QString name = qText(preset.name);
        auto* button = makeButton({"preset " + name, tr("Add %1").arg(name)}, name, 9);
        connect(button, &QPushButton::clicked, this,
                [this, preset] { addSource(preset.name, preset.url); });
        row->addWidget(button);
        presets_.push_back(button);
    }
    row->addStretch();
    return area;
}

CustomSources::Row CustomSources::makeRow(const UserTLESource& source) {
    const QString spoken = qText(source.name) + ", " + qText(source.url);
    auto* subscription =
        new SwitchRow({"source " + qText(source.url), spoken}, makeCaption(source));
    connect(subscription, &SwitchRow::switched, this,
            [this, key = source.categoryKey()](bool on) { subscribe(*state_, key, on); });
    auto* remove = new SymbolButton(Symbol::trash, 10, tr("Remove this custom URL source"));
    remove->setObjectName("remove " + qText(source.url));
    remove->setAccessibleName(tr("Remove %1").arg(spoken));
    connect(remove, &SymbolButton::clicked, this, [this, source] { removeUserSource(source); });

    auto* area = new QWidget;
    auto* row = makeRowLayout(area);
    row->addWidget(subscription, 1);
    row->addWidget(remove);
    return {area, subscription, remove};
}

/// What cannot be added stays in its row for correction.
void CustomSources::addNewUserSource() {
    const QString name = name_->text().trimmed();
    const QString url = url_->text().trimmed();
    if (name.isEmpty() || url.isEmpty()) return (name.isEmpty() ? name_ : url_)->setFocus();
    if (const QString why = refusalOf(url); !why.isEmpty()) {
        refuse(why);
        return url_->setFocus();
    }
    addSource(name.toStdString(), url.toStdString());
    name_->clear();
    url_->clear();
    name_->setFocus();
}

/// Why an address cannot be added; empty if it can.
QString CustomSources::refusalOf(const QString& url) const {
    if (!isWebAddress(url)) return tr("An address begins with http:// or https://");
    const auto known = std::ranges::find(sources_, url.toStdString(), &UserTLESource::url);
    if (known == sources_.end()) return {};
    return tr("This address is there already, as “%1”").arg(qText(known->name));
}

void CustomSources::refuse(const QString& why) {
    refusal_->show(why);
    refusal_->note()->setVisible(!why.isEmpty());
}

void CustomSources::addSource(const std::string& name, const std::string& url) {
    const UserTLESource source{UniqueId::make().text(), name, url};
    if (!state_->userSources().add(source)) return;
    readSources();
    subscribe(*state_, source.categoryKey(), true);
    showSubscriptions();
}

void CustomSources::removeUserSource(const UserTLESource& source) {
    state_->userSources().remove(source.id);
    auto keys = state_->subscribedCategories.get();
    keys.erase(source.categoryKey());
    state_->subscribedCategories = std::move(keys);
    readSources();
    state_->loadData();
}

void CustomSources::readSources() {
    sources_ = state_->userSources().load();
    showRows();
    showSubscriptions();
    showDownloads();
    enableButtons();
    emit sourcesChanged();
}

/// The focus of a row that goes moves to the one in its place. The old rows may be those whose
/// button has just been pressed. The first rows are made before what stands below them, and so are
/// in the order of Tab.
void CustomSources::showRows() {
    const auto focused = std::ranges::find_if(
        rows_, [](const Row& row) { return row.area->isAncestorOf(QApplication::focusWidget()); });
    const auto place = static_cast<std::size_t>(focused - rows_.begin());
    const bool hadFocus = focused != rows_.end();
    for (const Row& row : std::exchange(rows_, {})) {
        row.area->hide();
        row.area->deleteLater();
    }
    QWidget* before = name_ != nullptr ? tabStopBefore(*name_) : nullptr;
    for (const auto& source : sources_) {
        rows_.push_back(makeRow(source));
        column_->addWidget(rows_.back().area);
        if (before == nullptr) continue;
        for (QWidget* control :
             {static_cast<QWidget*>(rows_.back().subscription->button()), rows_.back().remove}) {
            QWidget::setTabOrder(std::exchange(before, control), control);
        }
    }
    if (!hadFocus) return;
    QWidget* next = rows_.empty() ? name_ : rows_[std::min(place, rows_.size() - 1)].remove;
    next->setFocus();
}

void CustomSources::showSubscriptions() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i].subscription->display(
            state_->subscribedCategories->contains(sources_[i].categoryKey()));
    }
}

void CustomSources::showDownloads() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        rows_[i].subscription->setDetail(
            qText(sourceDetail(state_->downloads, sources_[i].categoryKey(), state_->now())));
    }
}

void CustomSources::enableButtons() {
    add_->setEnabled(!name_->text().trimmed().isEmpty() && !url_->text().trimmed().isEmpty());
    const auto& presets = state_->presetSources();
    for (std::size_t i = 0; i < presets_.size(); ++i) {
        presets_[i]->setEnabled(!isKnown(presets[i].url));
    }
}

bool CustomSources::isKnown(const std::string& url) const {
    return std::ranges::find(sources_, url, &UserTLESource::url) != sources_.end();
}

}  // namespace veloran
