#include "ui/map/earth_picture.h"

#include <QFileInfo>
#include <QImageReader>
#include <QStandardPaths>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace veloran {

namespace {

constexpr qint64 kMostBytes = 64 << 20;
constexpr int kMostPixelsAcross = 16384;
constexpr QSize kGreatestSize(4096, 2048);

bool isWholeEarth(QSize size) {
    return size.width() > 1 && size.width() <= kMostPixelsAcross &&
           std::abs(size.width() - 2 * size.height()) <= size.width() / 100;
}

QImage readPicture(const QString& path) {
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > kMostBytes) return {};
    QImageReader reader(path);
    const QSize size = reader.size();
    if (!isWholeEarth(size)) return {};
    if (size.width() > kGreatestSize.width()) reader.setScaledSize(kGreatestSize);
    const QImage picture = reader.read();
    return isWholeEarth(picture.size()) ? picture.convertToFormat(QImage::Format_RGB32) : QImage();
}

}  // namespace

QImage readEarthPicture(const QStringList& paths) {
    for (const QString& path : paths) {
        QImage picture = readPicture(path);
        if (!picture.isNull()) return picture;
    }
    return {};
}

EarthPicture::EarthPicture(QStringList paths, QObject* parent)
    : QObject(parent), paths_(std::move(paths)) {}

EarthPicture::~EarthPicture() {
    if (thread_.joinable()) thread_.join();
}

void EarthPicture::load() {
    if (std::exchange(isBegun_, true)) return;
    try {
        thread_ = std::thread([this] {
            arriving_ = readEarthPicture(paths_);
            QMetaObject::invokeMethod(this, &EarthPicture::take, Qt::QueuedConnection);
        });
    } catch (const std::system_error&) {
        // No thread to be had: the globe is drawn without a picture.
    }
}

void EarthPicture::take() {
    thread_.join();
    image_ = std::move(arriving_);
    if (!image_.isNull()) emit loaded();
}

QStringList EarthPicture::standardPaths() {
    QStringList paths;
    for (const QString& directory :
         QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
        paths.append(directory + "/xplanet/images/earth.jpg");
    }
    paths.append("/usr/share/xplanet/images/earth.jpg");
    paths.removeDuplicates();
    return paths;
}

}  // namespace veloran
