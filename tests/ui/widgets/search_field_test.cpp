#include "ui/widgets/search_field.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "ui/widgets/symbol_button.h"

namespace veloran {
namespace {

TEST(SearchFieldTest, ClearButtonIsThereWhileThereIsSomethingToClear) {
    SearchField field("Search name");
    auto* clear = field.findChild<SymbolButton*>("clearSearch");
    const int height = field.height();
    EXPECT_FALSE(clear->isVisibleTo(&field));
    QSignalSpy changed(&field, &SearchField::textChanged);
    QTest::keyClicks(field.findChild<QLineEdit*>("searchText"), "rs");
    EXPECT_EQ(field.text(), "rs");
    EXPECT_EQ(changed.size(), 2);
    EXPECT_TRUE(clear->isVisibleTo(&field));
    EXPECT_EQ(field.height(), height);
    clear->click();
    EXPECT_EQ(field.text(), "");
    EXPECT_FALSE(clear->isVisibleTo(&field));
}

}  // namespace
}  // namespace veloran
