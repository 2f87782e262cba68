#pragma once

#include <QWidget>
#include <memory>

#include "core/app_state.h"
#include "ui/scene/scene_pixmap.h"
#include "ui/sky_plot/frame_timer.h"
#include "ui/sky_plot/polar_plot_scene.h"

namespace veloran {

/// The sky above the observer: the chart, the track of the selected pass, and where the satellite
/// is now. The satellite moves by the clock, frame by frame; the rest is painted once.
class DiskView : public QWidget {
    Q_OBJECT
  public:
    /// Below this the labels would lie on each other.
    static constexpr int kLeastSide = 140;

    explicit DiskView(std::shared_ptr<AppState> state, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override { return {kLeastSide, kLeastSide}; }
    const FrameTimer& frames() const { return frames_; }

  public slots:
    /// Takes up another selection.
    void refresh();
    /// Moves the live layer on; paints nothing where nothing is to be seen.
    void showFrame();
    /// Tells in words where the satellite is.
    void describe();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    SkyDisk disk() const { return skyDisk(width(), height()); }
    scene::Scene standingScene() const;
    std::optional<LiveSky> readSky() const;
    QRect reach(const LiveSky& sky) const;

    std::shared_ptr<AppState> state_;
    FrameTimer frames_;
    std::optional<UniqueId> shownPass_;
    ScenePixmap standing_{Ink::window};
    scene::Scene live_;
    QRect livePlace_;
};

}  // namespace veloran
