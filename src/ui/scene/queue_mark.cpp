#include "ui/scene/queue_mark.h"

namespace veloran {

scene::Scene queueMarkScene(bool isQueued, double size) {
    const scene::Point center{size / 2, size / 2};
    const double stroke = size / 12;
    const double radius = size / 2 - stroke;
    if (!isQueued) return {scene::Ring{center, radius, {Ink::secondary, 0.6, stroke}}};
    const auto at = [&](double x, double y) {
        return scene::Point{center.x + x * radius, center.y + y * radius};
    };
    return {scene::Disc{center, radius + stroke / 2, {Ink::cyan}},
            scene::Polyline{{at(-0.545, -0.045), at(-0.1, 0.4), at(0.585, -0.455)},
                            {Ink::control, 1, size / 9}}};
}

}  // namespace veloran
