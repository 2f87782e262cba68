#include "ui/theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QStyleOption>
#include <utility>

namespace veloran {
namespace {

class ThemeTest : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override { Theme::apply(GetParam()); }
    void TearDown() override { Theme::apply(true); }
};
INSTANTIATE_TEST_SUITE_P(Sets, ThemeTest, testing::Values(true, false),
                         [](const auto& set) { return set.param ? "Dark" : "Light"; });

constexpr Ink kTextInks[] = {Ink::green, Ink::red,     Ink::orange,   Ink::yellow,
                             Ink::cyan,  Ink::blue,    Ink::purple,   Ink::gray,
                             Ink::mint,  Ink::primary, Ink::secondary};

TEST_P(ThemeTest, EveryTextColourIsLegibleOnEveryBackground) {
    for (const Ink ground : {Ink::window, Ink::control}) {
        for (const Ink ink : kTextInks) {
            EXPECT_GE(contrastRatio(Theme::color(ink), Theme::color(ground)),
                      Theme::kLegibleContrast)
                << inkName(ink) << " on " << inkName(ground);
        }
    }
}

TEST_P(ThemeTest, TextOnTheTintsOfARowIsLegible) {
    const QColor list = Theme::color(Ink::control);
    const auto check = [&](Ink tint, double opacity, std::initializer_list<Ink> inks) {
        const QColor row = blended(Theme::color(tint, opacity), list);
        for (const Ink ink : inks) {
            EXPECT_GE(contrastRatio(Theme::color(ink), row), Theme::kLegibleContrast)
                << inkName(ink) << " on " << inkName(tint);
        }
    };
    const auto all = {Ink::primary, Ink::secondary, Ink::green, Ink::yellow, Ink::orange};
    check(Ink::blue, 0.15, all);
    check(Ink::green, 0.08, all);
    check(Ink::orange, 0.06, all);
}

TEST_P(ThemeTest, FadedTextStaysLegible) {
    const QColor window = Theme::color(Ink::window);
    for (const double opacity : {0.8, 0.7, 0.5}) {
        for (const Ink ink : {Ink::secondary, Ink::green, Ink::red}) {
            EXPECT_GE(contrastRatio(Theme::text(ink, opacity), window), Theme::kLegibleContrast)
                << inkName(ink) << " at " << opacity;
        }
    }
}

TEST_P(ThemeTest, OpacityThatIsLegibleStaysAsTold) {
    const QColor window = Theme::color(Ink::window);
    EXPECT_EQ(Theme::text(Ink::primary, 0.8), blended(Theme::color(Ink::primary, 0.8), window));
}

TEST_P(ThemeTest, ApplicationTakesTheSet) {
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), Theme::color(Ink::window));
    EXPECT_EQ(QApplication::palette().color(QPalette::Window).lightness() < 128, GetParam());
    for (const auto& [text, ground] : {std::pair{QPalette::WindowText, QPalette::Window},
                                       {QPalette::Text, QPalette::Base},
                                       {QPalette::ButtonText, QPalette::Button},
                                       {QPalette::HighlightedText, QPalette::Highlight},
                                       {QPalette::ToolTipText, QPalette::ToolTipBase}}) {
        EXPECT_GE(contrastRatio(QApplication::palette().color(text),
                                QApplication::palette().color(ground)),
                  Theme::kLegibleContrast);
    }
}

/// Whether something empty of this kind stands out from the window on all sides.
void expectSeenFrame(QStyle::PrimitiveElement element, QStyleOption&& option) {
    constexpr double kSeen = 3;  // of what is no text (WCAG 2.1, level AA)
    QImage picture(20, 20, QImage::Format_RGB32);
    picture.fill(Theme::color(Ink::window));
    option.rect = {2, 2, 14, 14};
    option.palette = QApplication::palette();
    option.state = QStyle::State_Enabled | QStyle::State_Off;
    QPainter painter(&picture);
    QApplication::style()->drawPrimitive(element, &option, &painter);
    for (const QPoint& edge : {QPoint(2, 8), QPoint(15, 8), QPoint(8, 2), QPoint(8, 15)}) {
        EXPECT_GE(contrastRatio(picture.pixelColor(edge), Theme::color(Ink::window)), kSeen);
    }
}

TEST_P(ThemeTest, EmptyCheckBoxIsSeen) {
    expectSeenFrame(QStyle::PE_IndicatorCheckBox, QStyleOptionButton());
}

TEST_P(ThemeTest, EmptyFieldIsSeen) {
    QStyleOptionFrame field;
    field.lineWidth = 1;
    expectSeenFrame(QStyle::PE_FrameLineEdit, std::move(field));
}

TEST_P(ThemeTest, TextOnTheTrackButtonIsLegible) {
    EXPECT_GE(contrastRatio(Theme::color(Ink::control), Theme::color(Ink::green)),
              Theme::kLegibleContrast);
}

TEST(Theme, FacesAreMeasuredInPixels) {
    EXPECT_EQ(Theme::mono(24, QFont::Bold).pixelSize(), 24);
    EXPECT_EQ(Theme::face(18).pixelSize(), 18);
}

TEST(Theme, ContrastOfBlackAndWhiteIsTwentyOne) {
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 1e-6);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::white), 1, 1e-6);
}

}  // namespace
}  // namespace veloran
