#include "ui/title_bar.h"

#include <QHBoxLayout>

#include "ui/application_version.h"
#include "ui/commands.h"
#include "ui/formats.h"
#include "ui/widgets/spinner.h"
#include "ui/widgets/symbol_button.h"
#include "ui/widgets/value_label.h"

namespace veloran {

TitleBar::TitleBar(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {
    auto* name = new ValueLabel({15, QFont::Bold}, "Veloran");
    auto* version = new ValueLabel({10, QFont::Normal, Ink::secondary, 0.7},
                                   QString::fromStdString(versionText(applicationVersion())));
    version->setObjectName("version");
    version->setToolTip(tr("App version — auto-increments with each build"));
    position_ = new ValueLabel({11, QFont::Normal, Ink::secondary});
    position_->setObjectName("observerPosition");
    position_->setAccessibleName(tr("Observer"));
    locator_ = new ValueLabel({11, QFont::Medium, Ink::cyan});
    locator_->setObjectName("gridLocator");
    locator_->setAccessibleName(tr("Locator"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 6, 16, 6);
    row->setSpacing(12);
    row->addWidget(name);
    row->addWidget(version);
    row->addWidget(makeStatusArea(), 1);
    row->addWidget(position_);
    row->addWidget(locator_);
    row->addWidget(makeRefreshButton());
    refresh();
}

void TitleBar::refresh() {
    spinner_->setVisible(state_->isLoadingTLEs);
    status_->setText(state_->isLoadingTLEs ? tr("Loading...").toStdString()
                                           : state_->statusMessage.get());
    position_->setText(observerPosition(state_->obsLatitude, state_->obsLongitude));
    locator_->setText(state_->gridLocator.get());
}

QWidget* TitleBar::makeStatusArea() {
    auto* area = new QWidget;
    spinner_ = new Spinner(10);
    spinner_->setObjectName("loadingSpinner");
    status_ = new ValueLabel({10, QFont::Normal, Ink::secondary});
    status_->setObjectName("status");
    status_->setAccessibleName(tr("Status"));
    status_->setElastic();
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addStretch();
    row->addWidget(spinner_);
    row->addWidget(status_);
    row->addStretch();
    return area;
}

QWidget* TitleBar::makeRefreshButton() {
    auto* button = new SymbolButton(Symbol::arrowClockwise, 12, tr("Refresh Passes"));
    button->setObjectName("refreshPassesButton");
    connect(button, &QToolButton::clicked, this, [this] { refreshPasses(*state_); });
    return button;
}

}  // namespace veloran
