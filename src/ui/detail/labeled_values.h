#pragma once

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/widgets/value_label.h"

namespace veloran {

// The pairs of a name and a value that the panel is made of.

/// One pair of a grid: mono medium 14 secondary beside mono 15.
inline ValueLabel* smallLabel(const QString& text) {
    return new ValueLabel({14, QFont::Medium, Ink::secondary}, text);
}
inline ValueLabel* smallValue(const QString& name) {
    auto* value = new ValueLabel({15});
    value->setAccessibleName(name);
    return value;
}

/// A name above its value.
inline QVBoxLayout* detailItem(const QString& name, ValueLabel*& value) {
    value = new ValueLabel({16, QFont::DemiBold});
    value->setAccessibleName(name);
    auto* stack = new QVBoxLayout;
    stack->setSpacing(1);
    stack->addWidget(new ValueLabel({12, QFont::Medium, Ink::secondary}, name));
    stack->addWidget(value);
    return stack;
}

/// A name and its value on one line; the value keeps room for `sample`.
inline QHBoxLayout* breakdownPart(const QString& name, const QString& sample, ValueLabel*& value) {
    value = new ValueLabel({14, QFont::Normal, Ink::secondary});
    value->setAccessibleName(name);
    value->reserve(sample);
    value->setElastic();
    auto* row = new QHBoxLayout;
    row->setSpacing(3);
    row->addWidget(new ValueLabel({12, QFont::Normal, Ink::secondary, 0.7}, name));
    row->addWidget(value);
    return row;
}

}  // namespace veloran
