#include "ui/theme.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <algorithm>
#include <cmath>

namespace veloran {

namespace {

using ColorSet = std::array<QRgb, kInkCount>;

// In the order of Ink. The light set has darker variants, so that coloured text stays legible.
constexpr ColorSet kDark = {0xff32d74b, 0xffff5147, 0xffff9f0a, 0xffffd60a, 0xff5ac8f5,
                            0xff4c9dff, 0xffd08cf7, 0xff98989f, 0xff66d4cf, 0xffececee,
                            0xffababb2, 0xff232427, 0xff1b1c1f, 0xff3c3d42};
constexpr ColorSet kLight = {0xff15702e, 0xffc0141a, 0xff9c4000, 0xff735600, 0xff09657f,
                             0xff0a5fcc, 0xff8427bd, 0xff66666b, 0xff0a6a61, 0xff1d1d1f,
                             0xff505056, 0xfff5f5f7, 0xffffffff, 0xffd0d0d6};

constexpr const char* kRefused = "refused";  // a property of fields

bool darkApplied = true;
int applications = 0;

double linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

QPalette palette() {
    const QColor window = Theme::color(Ink::window);
    const QColor button = darkApplied ? QColor(0x3a, 0x3b, 0x40) : QColor(0xec, 0xec, 0xef);
    QPalette p(button, window);
    p.setColor(QPalette::WindowText, Theme::color(Ink::primary));
    p.setColor(QPalette::Base, Theme::color(Ink::control));
    p.setColor(QPalette::AlternateBase, window);
    p.setColor(QPalette::Text, Theme::color(Ink::primary));
    p.setColor(QPalette::Button, button);
    p.setColor(QPalette::ButtonText, Theme::color(Ink::primary));
    p.setColor(QPalette::BrightText, Theme::color(Ink::red));
    p.setColor(QPalette::PlaceholderText, Theme::color(Ink::secondary));
    p.setColor(QPalette::Link, Theme::color(Ink::blue));
    p.setColor(QPalette::Highlight,
               darkApplied ? QColor(0x1f, 0x5f, 0xb4) : QColor(0x0a, 0x5f, 0xcc));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::ToolTipBase, Theme::color(Ink::control));
    p.setColor(QPalette::ToolTipText, Theme::color(Ink::primary));
    const QColor idle = blended(Theme::color(Ink::secondary, 0.55), button);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        p.setColor(QPalette::Disabled, role, idle);
    }
    p.setColor(QPalette::Disabled, QPalette::Button,
               blended(QColor(button.red(), button.green(), button.blue(), 110), window));
    return p;
}

/// Fusion's own frames of check boxes and fields are darker than the window: on a dark one an empty
/// box would not be seen, nor which field has the keyboard.
class ThemeStyle final : public QProxyStyle {
  public:
    ThemeStyle() : QProxyStyle("Fusion") {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const double opacity = option->state.testFlag(State_Enabled) ? 0.65 : 0.4;
        if (element == PE_IndicatorCheckBox) {
            drawFrame(*painter, option->rect, 0, Theme::color(Ink::secondary, opacity));
        } else if (element == PE_FrameLineEdit) {
            drawFrame(*painter, option->rect, 2, fieldFrame(*option, widget, opacity));
        }
    }

  private:
    static QColor fieldFrame(const QStyleOption& option, const QWidget* widget, double opacity) {
        if (widget != nullptr && widget->property(kRefused).toBool()) {
            return Theme::color(Ink::red);
        }
        if (option.state.testFlag(State_HasFocus)) return Theme::color(Ink::blue);
        return Theme::color(Ink::secondary, opacity);
    }
    static void drawFrame(QPainter& painter, const QRect& rect, double cornerRadius,
                          const QColor& color) {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing, cornerRadius > 0);
        painter.setPen(color);
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius,
                                cornerRadius);
        painter.restore();
    }
};

}  // namespace

void Theme::apply(bool dark) {
    darkApplied = dark;
    ++applications;
    if (dynamic_cast<ThemeStyle*>(QApplication::style()) == nullptr) {
        QApplication::setStyle(new ThemeStyle);
    }
    QApplication::setPalette(palette());
    QApplication::setFont(face(13));
}

bool Theme::isDark() {
    return darkApplied;
}

QColor Theme::color(Ink ink, double opacity) {
    QColor color = QColor::fromRgb((darkApplied ? kDark : kLight)[static_cast<std::size_t>(ink)]);
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QColor Theme::color(const Paint& paint, double opacity) {
    if (const Ink* ink = std::get_if<Ink>(&paint)) return color(*ink, opacity);
    const auto& c = std::get<RgbColor>(paint);
    return QColor::fromRgbF(static_cast<float>(c.red), static_cast<float>(c.green),
                            static_cast<float>(c.blue), static_cast<float>(opacity));
}

QColor Theme::text(Ink ink, double opacity, const QColor& background) {
    QColor result = blended(color(ink, opacity), background);
    while (opacity < 1 && contrastRatio(result, background) < kLegibleContrast) {
        opacity = std::min(1.0, opacity + 0.02);
        result = blended(color(ink, opacity), background);
    }
    return result;
}

QColor Theme::text(const Tint& tint, const QColor& background) {
    if (const Ink* ink = std::get_if<Ink>(&tint.paint)) {
        return text(*ink, tint.opacity, background);
    }
    QColor result = blended(color(tint), background);
    for (float share = 0.05F; contrastRatio(result, background) < kLegibleContrast && share <= 1;
         share += 0.05F) {
        QColor plain = color(Ink::primary);
        plain.setAlphaF(share);
        result = blended(plain, color(tint.paint));
    }
    return result;
}

void Theme::markRefused(QWidget& field, bool refused) {
    field.setProperty(kRefused, refused);
    field.update();
}

int Theme::revision() {
    return applications;
}

QFont Theme::mono(int pixels, QFont::Weight weight) {
    // The columns of figures are laid out for this face; the system's own is wider on some.
    static const QFont fixed = [] {
        QFont chosen = QFontDatabase::systemFont(QFontDatabase::FixedFont);
        chosen.setFamilies({"DejaVu Sans Mono", chosen.family()});
        return chosen;
    }();
    QFont font = fixed;
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

QFont Theme::face(int pixels, QFont::Weight weight) {
    static const QFont general = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    QFont font = general;
    font.setPixelSize(pixels);
    font.setWeight(weight);
    return font;
}

double contrastRatio(const QColor& a, const QColor& b) {
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

QColor blended(const QColor& top, const QColor& bottom) {
    const double a = top.alphaF();
    const auto mix = [a](int over, int under) {
        return static_cast<int>(std::lround(a * over + (1 - a) * under));
    };
    return QColor(mix(top.red(), bottom.red()), mix(top.green(), bottom.green()),
                  mix(top.blue(), bottom.blue()));
}

}  // namespace veloran
