#include "ui/life/quit_question.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "ui/life/life_texts.h"
#include "ui/q_text.h"
#include "ui/symbol_icon.h"
#include "ui/widgets/fitted_text.h"

namespace veloran {

QuitQuestion::~QuitQuestion() {
    delete box_;
}

void QuitQuestion::ask(const Duty& duty, QWidget& window, std::function<void()> onQuit) {
    if (!box_) {
        QWidget* parent = window.isVisible() ? &window : nullptr;
        box_ = new QMessageBox(QMessageBox::NoIcon, QObject::tr("Quit Veloran?"),
                               QObject::tr("Quit Veloran?"), QMessageBox::NoButton, parent);
        box_->setObjectName("quitQuestion");
        box_->setWindowIcon(applicationIcon());
        box_->setIconPixmap(applicationIcon().pixmap(48));
        box_->setInformativeText(readable(qText(quitMessage(duty))));
        // Names of satellites come from outside: their markup is not obeyed.
        if (auto* message = box_->findChild<QLabel*>("qt_msgbox_informativelabel")) {
            message->setTextFormat(Qt::PlainText);
        }
        auto* quit = box_->addButton(QObject::tr("Quit"), QMessageBox::AcceptRole);
        quit->setObjectName("quitConfirm");
        auto* keep = box_->addButton(QObject::tr("Keep running"), QMessageBox::RejectRole);
        keep->setObjectName("quitKeep");
        box_->setEscapeButton(keep);
        box_->setDefaultButton(keep);
        box_->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(box_, &QDialog::finished, box_,
                         [box = box_.data(), quit, onQuit = std::move(onQuit)] {
                             if (box->clickedButton() == quit) onQuit();
                         });
        box_->open();  // modal to its window; tracking goes on
    }
    box_->raise();
    box_->activateWindow();
}

}  // namespace veloran
