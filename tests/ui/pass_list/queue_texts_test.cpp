#include "ui/pass_list/queue_texts.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "ui/formats.h"

namespace veloran::test {
namespace {

std::string nameOf(std::int64_t number) {
    return number == 44909 ? "RS-44" : "";
}

TEST(QueueTexts, HaveALineForEachEntryInOrderOfRising) {
    const Instant rise{817000000};
    const QueuedPassRef pass{"27607-816999000", "SO-50", 27607, rise - 1000, rise, 30};
    const std::string help = queueHelp({{"44909-817000000", QueueEntryState::gone, std::nullopt},
                                        {"5-817000060", QueueEntryState::deselected, std::nullopt},
                                        {pass.id, QueueEntryState::waiting, pass}},
                                       nameOf);
    EXPECT_EQ(help, fmt::format("{} SO-50: Will be tracked when it rises\n"
                                "{} RS-44: Will not be tracked: the pass has moved or is no longer "
                                "predicted\n"
                                "{} 5: Will not be tracked: the satellite is no longer selected",
                                listTime(rise - 1000), listTime(rise), listTime(rise + 60)));
    EXPECT_EQ(queueHelp({}, nameOf), "");
}

TEST(QueueTexts, OfALongQueueCountTheRest) {
    std::vector<QueueEntry> entries;
    for (int i = 0; i < 23; ++i) {
        entries.push_back({fmt::format("1-{}", 817000000 + i), QueueEntryState::gone, {}});
    }
    const std::string help = queueHelp(entries, nameOf);
    EXPECT_EQ(std::ranges::count(help, '\n'), 20);
    EXPECT_TRUE(help.ends_with("\nand 3 more")) << help;
}

}  // namespace
}  // namespace veloran::test
