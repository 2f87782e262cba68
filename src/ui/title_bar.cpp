#include "ui/title_bar.h"

#include <QHBoxLayout>
#include <QProgressBar>
#include <cmath>

#include "ui/application_version.h"
#include "ui/commands.h"
#include "ui/formats.h"
#include "ui/q_text.h"
#include "ui/widgets/fitted_text.h"
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
    row->addWidget(makeButtons());
    refresh();
}

void TitleBar::refresh() {
    spinner_->setVisible(state_->isLoadingTLEs);
    showStatus();
    progress_->setVisible(state_->passProgress->has_value());
    progress_->setValue(static_cast<int>(std::lround(100 * state_->passProgress->value_or(0))));
    position_->setText(observerPosition(state_->obsLatitude, state_->obsLongitude));
    locator_->setText(state_->gridLocator.get());
}

void TitleBar::showStatus() {
    const QString message = qText(state_->statusMessage.get());
    const bool isLoading = state_->isLoadingTLEs;
    status_->setText(isLoading ? tr("Loading...") : message);
    // The spinner hides what is waited for; pointing at it tells.
    const QString waitsFor = isLoading ? message : QString();
    if (status_->accessibleDescription() == waitsFor) return;
    status_->setToolTip(plainToolTip(waitsFor));
    status_->setAccessibleDescription(waitsFor);
}

QWidget* TitleBar::makeStatusArea() {
    auto* area = new QWidget;
    spinner_ = new Spinner(state_->loop(), 10);
    spinner_->setObjectName("loadingSpinner");
    status_ = new ValueLabel({10, QFont::Normal, Ink::secondary});
    status_->setObjectName("status");
    status_->setAccessibleName(tr("Status"));
    status_->setElastic();
    progress_ = new QProgressBar;
    progress_->setObjectName("passProgress");
    progress_->setAccessibleName(tr("Search of passes"));
    progress_->setTextVisible(false);
    progress_->setFixedSize(80, 6);
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addStretch();
    row->addWidget(spinner_);
    row->addWidget(status_);
    row->addWidget(progress_);
    row->addStretch();
    return area;
}

QWidget* TitleBar::makeButtons() {
    auto* area = new QWidget;
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    const auto add = [&](Symbol symbol, const QString& help, const char* name, auto action) {
        auto* button = new SymbolButton(symbol, 12, help);
        button->setObjectName(name);
        connect(button, &QToolButton::clicked, this, action);
        row->addWidget(button);
    };
    add(Symbol::grid, tr("Satellite Browser (Ctrl+B)"), "browserButton",
        [this] { emit browserRequested(); });
    add(Symbol::satellite, tr("Quick Satellite List"), "satelliteListButton",
        [this] { state_->showSatelliteList = true; });
    add(Symbol::arrowClockwise, tr("Refresh Passes"), "refreshPassesButton",
        [this] { refreshPasses(*state_); });
    add(Symbol::gear, tr("Settings"), "settingsButton", [this] { state_->showSettings = true; });
    return area;
}

}  // namespace veloran
