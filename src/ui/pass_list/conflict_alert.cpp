#include "ui/pass_list/conflict_alert.h"

#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "ui/formats.h"

namespace veloran {

ConflictAlert::ConflictAlert(std::shared_ptr<AppState> state, QWidget& parent)
    : state_(std::move(state)), parent_(parent) {}

void ConflictAlert::refresh() {
    const auto& conflict = state_->pendingPassConflict.get();
    if (conflict && !box_) open(*conflict);
    if (!conflict && box_) box_->close();
}

void ConflictAlert::open(const PassConflict& conflict) {
    box_ = new QMessageBox(QMessageBox::Question, QObject::tr("Pass conflict"),
                           QObject::tr("Pass conflict"), QMessageBox::NoButton, &parent_);
    box_->setObjectName("conflictAlert");
    box_->setInformativeText(QString::fromStdString(
        conflictMessage(conflict.incoming.satName, conflict.incoming.maxElevation,
                        conflict.existing.satName, conflict.existing.maxElevation)));
    auto* replace = box_->addButton(QObject::tr("Replace"), QMessageBox::AcceptRole);
    replace->setObjectName("conflictReplace");
    auto* keep = box_->addButton(QObject::tr("Keep existing"), QMessageBox::RejectRole);
    keep->setObjectName("conflictKeep");
    box_->setEscapeButton(keep);
    box_->setDefaultButton(keep);
    box_->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box_, &QDialog::finished, box_, [this, conflict, replace] {
        const bool replaces = std::exchange(box_, nullptr)->clickedButton() == replace;
        if (!state_->pendingPassConflict->has_value()) return;  // answered elsewhere
        if (replaces) {
            state_->resolveConflictReplace(conflict);
        } else {
            state_->resolveConflictKeepExisting();
        }
    });
    box_->open();  // modal to its window; the program goes on
}

}  // namespace veloran
