#pragma once

#include <QFont>

#include "ui/ink.h"

namespace veloran {

/// How a text looks; size in logical pixels.
struct TextStyle {
    int pixels = 13;
    QFont::Weight weight = QFont::Normal;
    Ink ink = Ink::primary;
    double opacity = 1;
    bool mono = true;
    bool operator==(const TextStyle&) const = default;
};

QFont fontOf(const TextStyle& style);

}  // namespace veloran
