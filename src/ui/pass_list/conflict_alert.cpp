#include "ui/pass_list/conflict_alert.h"

#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "ui/formats.h"
#include "ui/symbol_icon.h"

namespace veloran {

namespace {

constexpr int kLeastWidth = 440;

}  // namespace

ConflictAlert::ConflictAlert(std::shared_ptr<AppState> state, QWidget& parent)
    : state_(std::move(state)), parent_(parent) {}

void ConflictAlert::refresh() {
    const auto& conflict = state_->pendingPassConflict.get();
    if (conflict && !box_) open(*conflict);
    if (!conflict && box_) box_->close();
}

void ConflictAlert::open(const PassConflict& conflict) {
    box_ = new QMessageBox(QMessageBox::NoIcon, QObject::tr("Pass conflict"),
                           QObject::tr("Pass conflict"), QMessageBox::NoButton, &parent_);
    box_->setObjectName("conflictAlert");
    box_->setIconPixmap(applicationIcon().pixmap(48));
    box_->setInformativeText(QString::fromStdString(
        conflictMessage(conflict.incoming.satName, conflict.incoming.maxElevation,
                        conflict.existing.satName, conflict.existing.maxElevation)));
    // Names of satellites come from outside: their markup is not obeyed.
    if (auto* message = box_->findChild<QLabel*>("qt_msgbox_informativelabel")) {
        message->setTextFormat(Qt::PlainText);
    }
    auto* replace = box_->addButton(QObject::tr("Replace"), QMessageBox::AcceptRole);
    replace->setObjectName("conflictReplace");
    auto* keep = box_->addButton(QObject::tr("Keep existing"), QMessageBox::RejectRole);
    keep->setObjectName("conflictKeep");
    box_->setEscapeButton(keep);
    box_->setDefaultButton(keep);
    box_->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box_, &QDialog::finished, box_, [this, replace] {
        const bool replaces = std::exchange(box_, nullptr)->clickedButton() == replace;
        const auto& pending = state_->pendingPassConflict.get();
        if (!pending) return;  // answered elsewhere
        if (replaces) {
            state_->resolveConflictReplace(*pending);  // its passes may have been found again
        } else {
            state_->resolveConflictKeepExisting();
        }
    });
    // A box as wide as its buttons would break the message into a narrow column.
    if (auto* grid = qobject_cast<QGridLayout*>(box_->layout())) {
        grid->addItem(new QSpacerItem(kLeastWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
    box_->setStyleSheet("QLabel#qt_msgbox_label { font-weight: bold; }");
    box_->open();  // modal to its window; the program goes on
}

}  // namespace veloran
