#pragma once

#include <QImage>
#include <QObject>
#include <QStringList>
#include <thread>

namespace veloran {

/// The first of these files that is a picture of the whole Earth, twice as wide as high, as 32-bit
/// RGB and at most 4096 pixels wide; none if there is none, or one beyond all measure. Reads from
/// the disk.
QImage readEarthPicture(const QStringList& paths);

/// The Earth for the globe, as the package xplanet-images brings it. Read and decoded on a thread
/// of its own, since the window must not wait for the disk.
class EarthPicture : public QObject {
    Q_OBJECT
  public:
    explicit EarthPicture(QStringList paths = standardPaths(), QObject* parent = nullptr);
    ~EarthPicture() override;

    /// Begins to read; `loaded` follows if a picture is found. Only the first call does anything.
    void load();
    /// Null until `loaded`.
    const QImage& image() const { return image_; }

    /// Where the picture may lie: the user's own data directory before the system's.
    static QStringList standardPaths();

  signals:
    void loaded();

  private:
    void take();

    QStringList paths_;
    QImage image_;
    QImage arriving_;  ///< the thread's until it has ended
    std::thread thread_;
    bool isBegun_ = false;
};

}  // namespace veloran
