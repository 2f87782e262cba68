#include "ui/map/earth_picture.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

#include "ui/patience.h"

namespace veloran::test {
namespace {

class EarthPictureTest : public ::testing::Test {
  protected:
    QString path(const QString& name) const { return directory_.filePath(name); }

    QString picture(const QString& name, int width, int height, QRgb color = 0xff112233) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(path(name)));
        return path(name);
    }

    QString bytes(const QString& name, const QByteArray& content) {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path(name);
    }

    QTemporaryDir directory_;
};

TEST_F(EarthPictureTest, FirstPictureThatIsThereIsTaken) {
    const auto second = picture("b.png", 64, 32, 0xff00ff00);
    const auto third = picture("c.png", 64, 32, 0xffff0000);
    const auto image = readEarthPicture({path("a.png"), second, third});
    EXPECT_EQ(image.size(), QSize(64, 32));
    EXPECT_EQ(image.pixel(3, 3), 0xff00ff00);
    EXPECT_EQ(image.format(), QImage::Format_RGB32);
}

TEST_F(EarthPictureTest, BrokenPictureIsPassedOver) {
    QFile whole(picture("whole.png", 64, 32));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray content = whole.readAll();
    const QStringList broken = {bytes("empty.png", ""), bytes("text.jpg", "no picture at all"),
                                bytes("cut.png", content.first(content.size() / 2)),
                                directory_.path(), ""};
    EXPECT_TRUE(readEarthPicture(broken).isNull());
    EXPECT_EQ(readEarthPicture(broken + QStringList{path("whole.png")}).width(), 64);
}

TEST_F(EarthPictureTest, PictureOfAnotherShapeIsNotTheEarth) {
    EXPECT_TRUE(readEarthPicture({picture("square.png", 64, 64)}).isNull());
    EXPECT_TRUE(readEarthPicture({picture("high.png", 32, 64)}).isNull());
    EXPECT_TRUE(readEarthPicture({picture("dot.png", 1, 1)}).isNull());
}

TEST_F(EarthPictureTest, LargePictureIsMadeSmaller) {
    EXPECT_EQ(readEarthPicture({picture("large.jpg", 5000, 2500)}).size(), QSize(4096, 2048));
}

TEST_F(EarthPictureTest, PictureBeyondAllMeasureIsPassedOver) {
    // A header that promises 40,000 x 20,000 pixels.
    const auto huge = bytes("huge.ppm", "P6\n40000 20000\n255\n");
    EXPECT_TRUE(readEarthPicture({huge}).isNull());
    QFile sparse(picture("sparse.png", 64, 32));
    ASSERT_TRUE(sparse.resize(qint64{65} << 20));
    EXPECT_TRUE(readEarthPicture({sparse.fileName()}).isNull());
}

TEST_F(EarthPictureTest, ArrivesOnTheThreadThatOwnsIt) {
    EarthPicture earth({picture("earth.png", 64, 32)});
    QThread* thread = nullptr;
    QObject::connect(&earth, &EarthPicture::loaded, [&] { thread = QThread::currentThread(); });
    QSignalSpy loaded(&earth, &EarthPicture::loaded);
    EXPECT_TRUE(earth.image().isNull());
    earth.load();
    EXPECT_TRUE(earth.image().isNull()) << "never before the loop turns";
    earth.load();
    ASSERT_TRUE(loaded.count() == 1 || loaded.wait(kPatienceMs));
    EXPECT_EQ(loaded.count(), 1);
    EXPECT_EQ(thread, QThread::currentThread());
    EXPECT_EQ(earth.image().width(), 64);
}

TEST_F(EarthPictureTest, MayGoWhileItIsBeingRead) {
    const auto large = picture("large.jpg", 2048, 1024);
    for (int i = 0; i < 3; ++i) {
        EarthPicture earth({large});
        earth.load();
    }
    const EarthPicture unused({large});
    EXPECT_TRUE(unused.image().isNull());
}

TEST(EarthPicture, LooksInTheDataDirectoriesAndWhereThePackageIs) {
    const auto paths = EarthPicture::standardPaths();
    EXPECT_EQ(paths.count("/usr/share/xplanet/images/earth.jpg"), 1);
    for (const QString& path : paths) EXPECT_TRUE(path.endsWith("/xplanet/images/earth.jpg"));
}

}  // namespace
}  // namespace veloran::test
