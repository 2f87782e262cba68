#include "ui/timeline/sky_track_view.h"

namespace veloran {

SkyTrackView::SkyTrackView(std::shared_ptr<AppState> state, QWidget* parent)
    : QWidget(parent), state_(std::move(state)) {}

void SkyTrackView::refresh() {}

}  // namespace veloran
