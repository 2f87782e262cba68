#include "ui/life/quit_question.h"

#include <utility>

#include "ui/life/life_texts.h"
#include "ui/q_text.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/question_box.h"

namespace veloran {

QuitQuestion::~QuitQuestion() {
    delete box_;
}

void QuitQuestion::ask(const Duty& duty, QWidget& window, std::function<void()> onQuit) {
    if (!box_) {
        const Question question{QObject::tr("Quit Veloran?"), readable(qText(quitMessage(duty))),
                                QObject::tr("Quit"), QObject::tr("Keep running")};
        box_ = makeQuestionBox(question, window.isVisible() ? &window : nullptr,
                               [onQuit = std::move(onQuit)](bool quits) {
                                   if (quits) onQuit();
                               });
        box_->setObjectName("quitQuestion");
        box_->open();
    }
    box_->raise();
    box_->activateWindow();
}

}  // namespace veloran
