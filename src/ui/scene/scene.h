#pragma once

#include <variant>
#include <vector>

#include "ui/ink.h"

namespace veloran::scene {

// A picture as a plain list of shapes in drawing order, with exact style values. Coordinates are
// logical pixels from the top left corner, x to the right and y down.

struct Point {
    double x = 0;
    double y = 0;
    bool operator==(const Point&) const = default;
};

struct Fill {
    Ink ink;
    double opacity = 1;
    bool operator==(const Fill&) const = default;
};

struct Stroke {
    Ink ink;
    double opacity = 1;
    double width = 1;
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

using Shape = std::variant<Disc, Ring, Line, Polyline>;
using Scene = std::vector<Shape>;

}  // namespace veloran::scene
