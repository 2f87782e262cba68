#include "ui/pass_list/conflict_alert.h"

#include <utility>

#include "ui/formats.h"
#include "ui/widgets/question_box.h"

namespace veloran {

ConflictAlert::ConflictAlert(std::shared_ptr<AppState> state, QWidget& parent)
    : state_(std::move(state)), parent_(parent) {}

void ConflictAlert::refresh() {
    const auto& conflict = state_->pendingPassConflict.get();
    if (conflict && !box_) open(*conflict);
    if (!conflict && box_) box_->close();
}

void ConflictAlert::open(const PassConflict& conflict) {
    const Question question{QObject::tr("Pass conflict"),
                            QString::fromStdString(conflictMessage(
                                conflict.incoming.satName, conflict.incoming.maxElevation,
                                conflict.existing.satName, conflict.existing.maxElevation)),
                            QObject::tr("Replace"), QObject::tr("Keep existing")};
    box_ = makeQuestionBox(question, &parent_, [this](bool replaces) {
        box_ = nullptr;
        const auto& pending = state_->pendingPassConflict.get();
        if (!pending) return;  // answered elsewhere
        if (replaces) {
            state_->resolveConflictReplace(*pending);  // its passes may have been found again
        } else {
            state_->resolveConflictKeepExisting();
        }
    });
    box_->setObjectName("conflictAlert");
    box_->open();  // modal to its window; the program goes on
}

}  // namespace veloran
