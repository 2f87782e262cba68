#pragma once

namespace veloran {

struct Vec3 {
    double x = 0;
    double y = 0;
    double z = 0;
};

}  // namespace veloran
