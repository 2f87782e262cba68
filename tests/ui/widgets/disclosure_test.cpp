#include "ui/widgets/disclosure.h"

#include <gtest/gtest.h>

#include <QKeySequence>
#include <QLabel>
#include <QTest>
#include <QToolButton>

namespace veloran {
namespace {

TEST(DisclosureTest, OpensAndClosesByPointerAndKeyboard) {
    auto* content = new QLabel("content");
    Disclosure disclosure("Example", 11, content);
    auto* heading = disclosure.findChild<QToolButton*>("disclosureHeading");
    EXPECT_FALSE(disclosure.isOpen());
    EXPECT_FALSE(content->isVisibleTo(&disclosure));
    heading->click();
    EXPECT_TRUE(content->isVisibleTo(&disclosure));
    QTest::keyClick(heading, Qt::Key_Space);
    EXPECT_FALSE(disclosure.isOpen());
    EXPECT_FALSE(content->isVisibleTo(&disclosure));
}

TEST(DisclosureTest, AmpersandIsNoKeyToPress) {
    Disclosure disclosure("Weather & Earth", 11, new QLabel);
    const auto* heading = disclosure.findChild<QToolButton*>("disclosureHeading");
    EXPECT_EQ(heading->text(), "Weather && Earth");
    EXPECT_EQ(heading->accessibleName(), "Weather & Earth");
    EXPECT_TRUE(heading->shortcut().isEmpty());
}

TEST(DisclosureTest, DetailIsShownAndSpoken) {
    Disclosure disclosure("Weather", 11, new QLabel);
    disclosure.setDetail("2/5");
    EXPECT_EQ(disclosure.detail(), "2/5");
    EXPECT_EQ(disclosure.findChild<QToolButton*>("disclosureHeading")->accessibleDescription(),
              "2/5");
}

}  // namespace
}  // namespace veloran
