#pragma once

#include <QFont>
#include <string>
#include <variant>
#include <vector>

#include "ui/paint.h"
#include "ui/symbol_icon.h"

namespace veloran::scene {

// A picture as a plain list of shapes in drawing order, with exact style values. Coordinates are
// logical pixels from the top left corner, x to the right and y down.

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

using Fill = Tint;

/// Lines end where their points do.
struct Stroke {
    Paint paint;
    double opacity = 1;
    double width = 1;
    double dash = 0;  ///< length of a dash; 0 draws a whole line
    double gap = 0;
    bool operator==(const Stroke&) const = default;
};

struct Disc {
    Point center;
    double radius;
    Fill fill;
};

struct Ring {
    Point center;
    double radius;
    Stroke stroke;
};

struct Line {
    Point from, to;
    Stroke stroke;
};

struct Polyline {
    std::vector<Point> points;
    Stroke stroke;
};

/// Closed by itself.
struct Polygon {
    std::vector<Point> points;
    Fill fill;
};

/// Rings, each closed by itself, filled together once: what lies within an odd number of them.
struct Region {
    std::vector<std::vector<Point>> rings;
    Fill fill;
};

/// Which edge of a text lies at its point; always in the middle of its height.
enum class Anchor { leading, center, trailing };

struct Text {
    Point at;
    std::string text;
    Fill fill;
    int pixels;
    QFont::Weight weight = QFont::Normal;
    Anchor anchor = Anchor::center;
    bool mono = true;
};

/// A text in the default face on a rounded plate, centred.
struct Tag {
    Point center;
    std::string text;
    int pixels;
    QFont::Weight weight;
    double horizontalPadding;
    double verticalPadding;
    double cornerRadius;
};

/// One of our symbols, centred.
struct Icon {
    Point center;
    double size;
    Symbol symbol;
    Paint paint;
};

using Shape = std::variant<Disc, Ring, Line, Polyline, Polygon, Region, Text, Tag, Icon>;
using Scene = std::vector<Shape>;

}  // namespace veloran::scene
