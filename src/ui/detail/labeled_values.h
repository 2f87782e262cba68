#pragma once

#include <QString>

class QHBoxLayout;
class QVBoxLayout;

namespace veloran {

class ValueLabel;

// The pairs of a name and a value that the panel is made of. `spoken` is the name for a screen
// reader: a longer one, where the name on the screen is short or not the only one.

/// One pair of a grid: mono medium 14 secondary beside mono 15.
ValueLabel* smallLabel(const QString& text);
ValueLabel* smallValue(const QString& spoken);

/// A name above its value.
QVBoxLayout* detailItem(const QString& name, const QString& spoken, ValueLabel*& value);

/// A name and its value on one line; the value keeps room for `sample`.
QHBoxLayout* breakdownPart(const QString& name, const QString& spoken, const QString& sample,
                           ValueLabel*& value);

}  // namespace veloran
