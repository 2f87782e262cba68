#pragma once

#include "ui/scene/scene.h"

namespace veloran {

/// The mark in front of a pass, in a square of this size: a check on a disc when the pass is in the
/// queue, else an open circle.
scene::Scene queueMarkScene(bool isQueued, double size);

}  // namespace veloran
