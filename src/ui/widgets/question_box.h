#pragma once

#include <QMessageBox>
#include <functional>

namespace veloran {

/// A question with two answers: one changes something, the other, which is also what Escape and a
/// closed box mean, leaves all as it is.
struct Question {
    QString title;
    QString message;  ///< plain: names in it come from outside, and their markup is not obeyed
    QString act;
    QString keep;
};

/// A box with the question, modal to `parent`, which may be absent; the program goes on. It is
/// shown by open(), and deletes itself when it is closed, after it has told whether to act.
QMessageBox* makeQuestionBox(const Question& question, QWidget* parent,
                             std::function<void(bool act)> onAnswer);

}  // namespace veloran
