#include "ui/browser/browser_texts.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

using Kind = DownloadOutcome::Kind;

GroupDownload awaited(const char* label) {
    return {label, true, std::nullopt};
}
GroupDownload gave(const char* label, Kind kind, std::int64_t number = 0) {
    return {label, false, DownloadOutcome{kind, number, Instant{}}};
}

TEST(EmptyBrowserText, SaysWhatIsWaitedFor) {
    EXPECT_EQ(emptyBrowserText(true, {awaited("Amateur Radio"), awaited("Weather")}),
              "Waiting for Amateur Radio, Weather…");
    EXPECT_EQ(emptyBrowserText(true, {gave("Weather", Kind::httpStatus, 503), awaited("GOES")}),
              "Waiting for GOES…\nWeather: HTTP 503");
    EXPECT_EQ(emptyBrowserText(true, {gave("GOES", Kind::records, 5)}), "Reading the elements…");
}

TEST(EmptyBrowserText, SaysWhatHasFailed) {
    EXPECT_EQ(emptyBrowserText(false, {gave("Weather", Kind::noAnswer), gave("GOES", Kind::records),
                                       gave("Own", Kind::noElements)}),
              "No elements could be had.\nWeather: no answer\nOwn: no elements in it\n"
              "Check the network, then press \"Refresh\".");
    EXPECT_EQ(emptyBrowserText(false, {{"Weather", false, std::nullopt}}),
              "No group has any elements.");
}

TEST(EmptyBrowserText, SaysThatNothingIsSubscribed) {
    EXPECT_TRUE(emptyBrowserText(false, {}).starts_with("No group is subscribed."));
}

TEST(EmptyBrowserText, ListsAFewOfMany) {
    std::vector<GroupDownload> groups(41, awaited("G"));
    EXPECT_EQ(emptyBrowserText(true, groups), "Waiting for G, G, G, G, G, G, 35 more…");
    groups.resize(6);
    EXPECT_EQ(emptyBrowserText(true, groups), "Waiting for G, G, G, G, G, G…");
}

}  // namespace
}  // namespace veloran
