#include "ui/widgets/text_style.h"

#include "ui/theme.h"

namespace veloran {

QFont fontOf(const TextStyle& style) {
    return style.mono ? Theme::mono(style.pixels, style.weight)
                      : Theme::face(style.pixels, style.weight);
}

}  // namespace veloran
