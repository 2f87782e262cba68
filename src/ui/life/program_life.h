#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "core/app_state.h"
#include "platform/notices.h"
#include "platform/sleep_inhibitor.h"
#include "ui/life/quit_question.h"
#include "ui/life/tray_symbol.h"
#include "ui/loop_timer.h"

namespace veloran {

class MainWindow;

/// How long the program lives, and what it is while nobody looks. Closed amid a session or with
/// passes to track it goes on in the background: a symbol in the tray and a notice say so, and it
/// ends by itself when nothing has been left to do for kIdleInBackgroundSeconds. Quitting asks. As
/// long as there is something to do, the machine is kept awake.
class ProgramLife : public QObject {
    Q_OBJECT
  public:
    ProgramLife(std::shared_ptr<AppState> state, MainWindow& window, SleepInhibitor& sleep,
                Notices& notices);

    bool isInBackground() const { return isInBackground_; }
    const TraySymbol& tray() const { return tray_; }

  public slots:
    /// From wherever it is.
    void showWindow();
    /// Asks once if there is anything to lose.
    void quit();
    /// Looks at what there is to do; by itself soon after each change and every few seconds.
    void look();

  signals:
    /// The program is to end now, without a question.
    void ended();

  private:
    void decideAfterClose();
    void goOnInBackground(const Duty& duty);
    void endWhenIdle(const Duty& duty);
    void stopSession();

    std::shared_ptr<AppState> state_;
    MainWindow& window_;
    SleepInhibitor& sleep_;
    Notices& notices_;
    TraySymbol tray_;
    QuitQuestion question_;
    LoopTimer soon_;    // after a change
    LoopTimer seldom_;  // while there is something to do, or nobody to look
    ChangeNotifier::Subscription subscription_;
    bool isInBackground_ = false;
    std::optional<Instant> idleSince_;  // in the background
};

}  // namespace veloran
