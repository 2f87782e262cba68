#include "ui/map/globe_texture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

namespace veloran {

namespace {

constexpr float kPi = std::numbers::pi_v<float>;

/// atan2 to 2e-6 radians, a thousandth of a pixel of the largest picture: the standard function
/// would take most of the time of a frame. Minimax polynomial for atan on 0 to 1.
inline float quickAtan2(float y, float x) {
    const float ax = std::abs(x);
    const float ay = std::abs(y);
    const float t = std::min(ax, ay) / std::max(std::max(ax, ay), 1e-30F);
    const float s = t * t;
    float angle =
        t * (0.99997726F +
             s * (-0.33262347F +
                  s * (0.19354346F + s * (-0.11643287F + s * (0.05265332F - s * 0.01172120F)))));
    angle = ay > ax ? kPi / 2 - angle : angle;
    angle = x < 0 ? kPi - angle : angle;
    return y < 0 ? -angle : angle;
}

struct FloatVec {
    float x, y, z;
};

FloatVec toFloat(const Vec3& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)};
}

/// From pixels of the canvas to places of the picture, a row at a time.
class RowMapper {
  public:
    RowMapper(const GlobeProjection& globe, double scale, const QImage& earth)
        : right_(toFloat(globe.frame().right)),
          up_(toFloat(globe.frame().up)),
          toEye_(toFloat(globe.frame().toEye)),
          eye_(static_cast<float>(globe.eyeDistance())),
          perPixel_(static_cast<float>(1 / (globe.focalLength() * scale))),
          across_(static_cast<float>(earth.width()) / (2 * kPi)),
          down_(static_cast<float>(earth.height()) / kPi) {}

    /// `x` and `y` are device pixels from the middle, to the right and up; one step right each.
    /// Gives the distance from the picture's top left corner in its pixels.
    void map(float x, float y, int count, float* u, float* v) const {
        const float b = y * perPixel_;
        const float above = eye_ * eye_ - 1;
        for (int i = 0; i < count; ++i) {
            const float a = (x + static_cast<float>(i)) * perPixel_;
            const float aside = a * a + b * b;
            // Beyond the limb, where a pixel reaches over it, the limb itself.
            const float root = std::sqrt(std::max(0.0F, 1 - aside * above));
            const float t = (eye_ - root) / (1 + aside);
            const float p = a * t;
            const float q = b * t;
            const float r = eye_ - t;
            const float px = p * right_.x + q * up_.x + r * toEye_.x;
            const float py = p * right_.y + q * up_.y + r * toEye_.y;
            const float pz = p * right_.z + q * up_.z + r * toEye_.z;
            u[i] = (quickAtan2(py, px) + kPi) * across_;
            v[i] = (kPi / 2 - quickAtan2(pz, std::sqrt(px * px + py * py))) * down_;
        }
    }

  private:
    FloatVec right_, up_, toEye_;
    float eye_, perPixel_, across_, down_;
};

/// Mixes two pixels, channel by channel; `share` of the second out of 256.
inline QRgb mixed(QRgb a, QRgb b, std::uint32_t share) {
    constexpr std::uint32_t kEven = 0x00ff00ff;
    const std::uint32_t even = ((a & kEven) * (256 - share) + (b & kEven) * share) >> 8;
    const std::uint32_t odd = ((a >> 8) & kEven) * (256 - share) + ((b >> 8) & kEven) * share;
    return (even & kEven) | (odd & ~kEven);
}

/// Reads between the pixels of the picture; round the Earth in longitude, not over the poles.
class Sampler {
  public:
    explicit Sampler(const QImage& earth)
        : bits_(reinterpret_cast<const QRgb*>(earth.constBits())),
          stride_(earth.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb))),
          width_(earth.width()),
          height_(earth.height()) {}

    QRgb at(float u, float v) const {
        // In 256ths of a pixel, from the middle of the first pixel; a turn keeps u positive.
        const int x = static_cast<int>(u * 256) + 256 * width_ - 128;
        const int y = std::clamp(static_cast<int>(v * 256) - 128, 0, 256 * (height_ - 1));
        int left = (x >> 8) - width_;
        left = left < 0 ? left + width_ : left >= width_ ? left - width_ : left;
        const int right = left + 1 < width_ ? left + 1 : 0;
        const int top = y >> 8;
        const QRgb* upper = bits_ + top * stride_;
        const QRgb* lower = top + 1 < height_ ? upper + stride_ : upper;
        const auto shareX = static_cast<std::uint32_t>(x & 255);
        const auto shareY = static_cast<std::uint32_t>(y & 255);
        return mixed(mixed(upper[left], upper[right], shareX),
                     mixed(lower[left], lower[right], shareX), shareY);
    }

  private:
    const QRgb* bits_;
    qsizetype stride_;
    int width_;
    int height_;
};

}  // namespace

void paintEarth(QImage& canvas, const GlobeProjection& globe, double scale, const QImage& earth) {
    const QImage picture = earth.convertToFormat(QImage::Format_RGB32);
    if (picture.isNull()) return;
    const RowMapper mapper(globe, scale, picture);
    const Sampler sampler(picture);
    const double radius = globe.limbRadius() * scale;
    const double middleX = globe.middle().x * scale;
    const double middleY = globe.middle().y * scale;
    const double reach = radius + 0.5;  // the last pixel that the disc touches
    std::vector<float> u(static_cast<std::size_t>(canvas.width()));
    std::vector<float> v(u.size());
    for (int row = 0; row < canvas.height(); ++row) {
        const double y = middleY - (row + 0.5);
        if (std::abs(y) >= reach) continue;
        const double half = std::sqrt(reach * reach - y * y);
        const int first = std::max(0, static_cast<int>(std::floor(middleX - half)));
        const int last = std::min(canvas.width(), static_cast<int>(std::ceil(middleX + half)));
        if (first >= last) continue;
        mapper.map(static_cast<float>(first + 0.5 - middleX), static_cast<float>(y), last - first,
                   u.data(), v.data());
        auto* out = reinterpret_cast<QRgb*>(canvas.scanLine(row));
        // Within `inner` every pixel is whole.
        const double inner = std::max(0.0, radius - 1);
        for (int column = first; column < last; ++column) {
            const auto i = static_cast<std::size_t>(column - first);
            const QRgb color = sampler.at(u[i], v[i]);
            const double x = column + 0.5 - middleX;
            const double squared = x * x + y * y;
            if (squared <= inner * inner) {
                out[column] = color;
            } else {
                const double share = std::clamp(reach - std::sqrt(squared), 0.0, 1.0);
                out[column] = mixed(out[column], color, static_cast<std::uint32_t>(share * 256));
            }
        }
    }
}

}  // namespace veloran
