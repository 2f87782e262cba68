#pragma once

#include <QColor>
#include <QFont>
#include <array>

#include "ui/paint.h"

class QWidget;

namespace veloran {

/// The look of the whole program: one dark and one light set of colours, and the two faces.
class Theme {
  public:
    /// Least contrast of text on its background (WCAG 2.1, level AA).
    static constexpr double kLegibleContrast = 4.5;

    /// Gives the application its style, palette and font. May be called again at any time: what is
    /// on screen repaints itself.
    static void apply(bool dark);
    static bool isDark();

    static QColor color(Ink ink, double opacity = 1);
    static QColor color(const Paint& paint, double opacity = 1);
    static QColor color(const Tint& tint) { return color(tint.paint, tint.opacity); }
    /// Colour of text on `background`, opaque. An opacity that would leave less than
    /// kLegibleContrast is raised as far as that takes.
    static QColor text(Ink ink, double opacity, const QColor& background);
    static QColor text(Ink ink, double opacity = 1) {
        return text(ink, opacity, color(Ink::window));
    }
    /// The same for any paint; a fixed colour that is illegible even when opaque is drawn towards
    /// the colour of plain text.
    static QColor text(const Tint& tint, const QColor& background);
    static QColor text(const Tint& tint) { return text(tint, color(Ink::window)); }

    /// Gives a field a red frame, or its own one back.
    static void markRefused(QWidget& field, bool refused);

    /// Grows with every `apply`: what keeps a picture redraws it then.
    static int revision();

    /// Faces by size in logical pixels. The mono face is the desktop's own.
    static QFont mono(int pixels, QFont::Weight weight = QFont::Normal);
    static QFont face(int pixels, QFont::Weight weight = QFont::Normal);
};

/// The ratio of relative luminances, 1 to 21 (WCAG 2.1), of opaque colours.
double contrastRatio(const QColor& a, const QColor& b);

/// `top` over an opaque `bottom`.
QColor blended(const QColor& top, const QColor& bottom);

}  // namespace veloran
