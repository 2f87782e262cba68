#include "ui/settings/field_mark.h"

#include <QLineEdit>
#include <utility>

#include "ui/theme.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/value_label.h"

namespace veloran {

FieldMark::FieldMark(QLineEdit& field)
    : QObject(&field),
      field_(field),
      note_(new ValueLabel({10, QFont::Normal, Ink::red, 1, false})) {
    note_->setObjectName(field.objectName() + "Note");
    note_->setElastic();
}

void FieldMark::show(const QString& why) {
    if (why == note_->text()) return;
    note_->setText(why);
    field_.setToolTip(plainToolTip(why));
    field_.setAccessibleDescription(why);
    Theme::markRefused(field_, !why.isEmpty());
}

ValueLabel* markUnread(QLineEdit& field, std::function<bool(std::string_view)> reads,
                       const QString& expected) {
    auto* mark = new FieldMark(field);
    const auto judge = [mark, expected, reads = std::move(reads)](const QString& text) {
        mark->show(reads(text.toStdString()) ? QString() : expected);
    };
    QObject::connect(&field, &QLineEdit::textChanged, mark, judge);
    return mark->note();
}

}  // namespace veloran
