#include "ui/life/tray_symbol.h"

#include <QAction>

#include "ui/life/life_texts.h"
#include "ui/q_text.h"
#include "ui/symbol_icon.h"
#include "ui/widgets/fitted_text.h"

namespace veloran {

TraySymbol::TraySymbol(QObject* parent)
    : QObject(parent), duty_(menu_.addAction(QString())), symbol_(applicationIcon()) {
    duty_->setObjectName("trayDuty");
    duty_->setEnabled(false);
    menu_.addSeparator();
    menu_.addAction(tr("Show"), this, &TraySymbol::showRequested)->setObjectName("trayShow");
    stop_ = menu_.addAction(tr("Stop"), this, &TraySymbol::stopRequested);
    stop_->setObjectName("trayStop");
    menu_.addSeparator();
    menu_.addAction(tr("Quit"), this, &TraySymbol::quitRequested)->setObjectName("trayQuit");
    symbol_.setContextMenu(&menu_);
    connect(&symbol_, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason != QSystemTrayIcon::Context) emit showRequested();
            });
}

void TraySymbol::tell(const Duty& duty) {
    const QString text = readable(qText(dutyText(duty)));
    duty_->setText(QString(text).replace('&', "&&"));  // one alone marks a key
    stop_->setEnabled(duty.session.has_value());
    // Some trays obey markup; what is between such signs is a satellite's name.
    symbol_.setToolTip("Veloran: " + QString(text).remove('<'));
}

}  // namespace veloran
