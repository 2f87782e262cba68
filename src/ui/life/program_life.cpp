#include "ui/life/program_life.h"

#include <QApplication>
#include <utility>

#include "core/unattended.h"
#include "ui/life/life_texts.h"
#include "ui/main_window.h"

namespace veloran {

namespace {

constexpr double kSoonSeconds = 1;     // after a change; ticks are many
constexpr double kSeldomSeconds = 10;  // passes rise and set without a change

}  // namespace

ProgramLife::ProgramLife(std::shared_ptr<AppState> state, MainWindow& window, SleepInhibitor& sleep,
                         Notices& notices)
    : state_(std::move(state)),
      window_(window),
      sleep_(sleep),
      notices_(notices),
      soon_(state_->loop(), kSoonSeconds, LoopTimer::Kind::single),
      seldom_(state_->loop(), kSeldomSeconds, LoopTimer::Kind::single) {
    QApplication::setQuitOnLastWindowClosed(false);
    connect(&window_, &MainWindow::quitRequested, this, &ProgramLife::quit);
    // Later: a desktop that ends its session closes the windows first, and is not to be told that
    // the program goes on.
    connect(&window_, &MainWindow::closed, this, &ProgramLife::decideAfterClose,
            Qt::QueuedConnection);
    connect(&tray_, &TraySymbol::showRequested, this, &ProgramLife::showWindow);
    connect(&tray_, &TraySymbol::stopRequested, this, &ProgramLife::stopSession);
    connect(&tray_, &TraySymbol::quitRequested, this, &ProgramLife::quit);
    connect(&soon_, &LoopTimer::timeout, this, &ProgramLife::look);
    connect(&seldom_, &LoopTimer::timeout, this, &ProgramLife::look);
    subscription_ = state_->objectWillChange.subscribe([this] {
        if (!soon_.isActive()) soon_.start();
    });
    look();
}

void ProgramLife::look() {
    const Duty duty = dutyOf(*state_);
    sleep_.keepAwake(stayAwakeReason(duty));
    if (isInBackground_) {
        tray_.tell(duty);
        endWhenIdle(duty);
    }
    if (duty.isAny() || isInBackground_) seldom_.start();
}

void ProgramLife::decideAfterClose() {
    if (window_.isVisible()) return;  // shown again meanwhile
    const Duty duty = dutyOf(*state_);
    if (duty.isAny()) {
        goOnInBackground(duty);
    } else {
        emit ended();
    }
}

void ProgramLife::goOnInBackground(const Duty& duty) {
    isInBackground_ = true;
    idleSince_ = std::nullopt;
    const bool hasTray = TraySymbol::isThereATray();
    tray_.tell(duty);
    if (hasTray) tray_.show();
    notices_.show({backgroundTitle(duty), backgroundText(hasTray)}, [this] { showWindow(); });
    look();
}

void ProgramLife::endWhenIdle(const Duty& duty) {
    const Instant now = state_->now();
    if (duty.isAny() || state_->isLoadingTLEs) {
        idleSince_ = std::nullopt;
    } else if (!idleSince_ || now < *idleSince_) {
        idleSince_ = now;
    } else if (now - *idleSince_ >= kIdleInBackgroundSeconds) {
        emit ended();
    }
}

void ProgramLife::showWindow() {
    isInBackground_ = false;
    tray_.hide();
    notices_.withdraw();
    window_.bringForward();
}

void ProgramLife::quit() {
    const Duty duty = dutyOf(*state_);
    if (!duty.isAny()) return emit ended();
    question_.ask(duty, window_, [this] { emit ended(); });
}

void ProgramLife::stopSession() {
    stopForGood(*state_);
    look();
}

}  // namespace veloran
