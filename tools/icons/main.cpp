// Draws the program's mark in the sizes that a desktop's icon theme has.
// Usage: veloran-icons SVG DIRECTORY SIZE...
// Writes DIRECTORY/<size>x<size>/apps/<base name of SVG>.png, sizes in pixels.

#include <fmt/format.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include "base/text.h"

namespace {

QImage drawn(QSvgRenderer& mark, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    mark.render(&painter);
    return image;
}

bool write(const QImage& image, const QString& file) {
    return QDir().mkpath(QFileInfo(file).path()) && image.save(file);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        fmt::print(stderr, "usage: veloran-icons SVG DIRECTORY SIZE...\n");
        return 2;
    }
    const QString source = QFile::decodeName(argv[1]);
    const QString directory = QFile::decodeName(argv[2]);
    QSvgRenderer mark(source);
    if (!mark.isValid()) {
        fmt::print(stderr, "{} does not read\n", argv[1]);
        return 1;
    }
    for (int index = 3; index < argc; ++index) {
        const auto size = veloran::parseInt64(argv[index]);
        if (!size || *size < 1 || *size > 4096) {
            fmt::print(stderr, "{} is no size\n", argv[index]);
            return 2;
        }
        const QString file = QString("%1/%2x%2/apps/%3.png")
                                 .arg(directory)
                                 .arg(*size)
                                 .arg(QFileInfo(source).baseName());
        if (!write(drawn(mark, static_cast<int>(*size)), file)) {
            fmt::print(stderr, "{} cannot be written\n", file.toStdString());
            return 1;
        }
    }
    return 0;
}
