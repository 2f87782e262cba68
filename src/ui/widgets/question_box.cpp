#include "ui/widgets/question_box.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "ui/symbol_icon.h"

namespace veloran {

namespace {

constexpr int kLeastWidth = 440;

}  // namespace

QMessageBox* makeQuestionBox(const Question& question, QWidget* parent,
                             std::function<void(bool act)> onAnswer) {
    auto* box = new QMessageBox(QMessageBox::NoIcon, question.title, question.title,
                                QMessageBox::NoButton, parent);
    box->setWindowIcon(applicationIcon());
    box->setIconPixmap(applicationIcon().pixmap(48));
    box->setInformativeText(question.message);
    if (auto* message = box->findChild<QLabel*>("qt_msgbox_informativelabel")) {
        message->setTextFormat(Qt::PlainText);
    }
    auto* act = box->addButton(question.act, QMessageBox::AcceptRole);
    act->setObjectName("questionAct");
    auto* keep = box->addButton(question.keep, QMessageBox::RejectRole);
    keep->setObjectName("questionKeep");
    box->setEscapeButton(keep);
    box->setDefaultButton(keep);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QDialog::finished, box, [box, act, onAnswer = std::move(onAnswer)] {
        onAnswer(box->clickedButton() == act);
    });
    // A box as wide as its buttons would break the message into a narrow column.
    if (auto* grid = qobject_cast<QGridLayout*>(box->layout())) {
        grid->addItem(new QSpacerItem(kLeastWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
    box->setStyleSheet("QLabel#qt_msgbox_label { font-weight: bold; }");
    return box;
}

}  // namespace veloran
