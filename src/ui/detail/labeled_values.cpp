#include "ui/detail/labeled_values.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/widgets/value_label.h"

namespace veloran {

ValueLabel* smallLabel(const QString& text) {
    return new ValueLabel({14, QFont::Medium, Ink::secondary}, text);
}

ValueLabel* smallValue(const QString& spoken) {
    auto* value = new ValueLabel({15});
    value->setAccessibleName(spoken);
    return value;
}

QVBoxLayout* detailItem(const QString& name, const QString& spoken, ValueLabel*& value) {
    value = new ValueLabel({16, QFont::DemiBold});
    value->setAccessibleName(spoken);
    auto* stack = new QVBoxLayout;
    stack->setSpacing(1);
    stack->addWidget(new ValueLabel({12, QFont::Medium, Ink::secondary}, name));
    stack->addWidget(value);
    return stack;
}

QHBoxLayout* breakdownPart(const QString& name, const QString& spoken, const QString& sample,
                           ValueLabel*& value) {
    value = new ValueLabel({14, QFont::Normal, Ink::secondary});
    value->setAccessibleName(spoken);
    value->reserve(sample);
    value->setElastic();
    auto* row = new QHBoxLayout;
    row->setSpacing(3);
    row->addWidget(new ValueLabel({12, QFont::Normal, Ink::secondary, 0.7}, name));
    row->addWidget(value);
    return row;
}

}  // namespace veloran
