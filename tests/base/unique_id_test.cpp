#include "base/unique_id.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace veloran {
namespace {

TEST(UniqueId, TenThousandOfThemDiffer) {
    std::set<UniqueId> ids;
    for (int i = 0; i < 10000; ++i) ids.insert(UniqueId::make());
    EXPECT_EQ(ids.size(), 10000u);
}

TEST(UniqueId, CarriesTheMarksOfARandomUuid) {
    const UniqueId id = UniqueId::make();
    EXPECT_EQ((id.high >> 12) & 0xF, 4u);
    EXPECT_EQ(id.low >> 62, 2u);
}

TEST(UniqueId, ThreadsDoNotShareASequence) {
    UniqueId other;
    std::thread([&other] { other = UniqueId::make(); }).join();
    EXPECT_NE(UniqueId::make(), other);
}

}  // namespace
}  // namespace veloran
