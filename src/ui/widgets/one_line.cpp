#include "ui/widgets/one_line.h"

#include <QLineEdit>
#include <QValidator>

namespace veloran {

namespace {

bool isShown(QChar c) {
    switch (c.category()) {
        case QChar::Other_Control:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            return false;
        default:
            return true;
    }
}

QString shownPart(const QString& text) {
    QString shown;
    for (const QChar c : text) {
        if (isShown(c)) shown += c;
    }
    return shown;
}

class OneLine final : public QValidator {
  public:
    using QValidator::QValidator;

    State validate(QString& text, int& cursor) const override {
        cursor = static_cast<int>(shownPart(text.left(cursor)).size());
        text = shownPart(text);
        return Acceptable;
    }
};

}  // namespace

void keepToOneLine(QLineEdit& field) {
    field.setValidator(new OneLine(&field));
}

}  // namespace veloran
