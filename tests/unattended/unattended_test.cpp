// Unattended days on real orbits, against a plain search of the sky and a plain queue.
// VELORAN_DAYS=<n> plays so many days in place of a few.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "base/text.h"
#include "rehearse/rehearsal.h"
#include "sample_catalogue/sample_catalogue.h"
#include "support/radio_server.h"
#include "support/running_case.h"
#include "support/unattended.h"

namespace veloran::test {
namespace {

constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kDay = 24 * kHour;
constexpr std::int64_t kRefresh = 6 * kHour;
constexpr unsigned kMostSeconds = 250;  // of real time, for the usual length
const Site kSite{52.52, 13.41, 40};
const Instant kStart = Instant::fromUnixSeconds(1795132800);  // 2026-11-20 00:00 UTC

std::optional<std::int64_t> givenDays() {
    const char* text = std::getenv("VELORAN_DAYS");
    return text ? parseInt64(text) : std::nullopt;
}
std::int64_t days(std::int64_t usual) {
    return givenDays().value_or(usual);
}
unsigned mostSeconds() {
    return givenDays() ? 3600 : kMostSeconds;
}

/// Amateur satellites on low orbits, with orbits of the size and shape that they have.
constexpr const char* kEight[] = {
    "ISS (ZARYA)",       "FO-29 (JAS-2)",           "SO-50 (SAUDISAT 1C)",
    "AO-73 (FUNCUBE-1)", "AO-91 (RADFXSAT FOX-1B)", "PO-101 (DIWATA-2B)",
    "JO-97 (JY1SAT)",    "RS-44 (DOSAAF-85)"};
constexpr const char* kMoreLow[] = {"AO-07",       "XW-2A (CAS-3A)",    "LILACSAT-2",
                                    "CAS-4A",      "TEVEL-1",           "NOAA 19",
                                    "METEOR-M2 3", "IO-117 (GREENCUBE)"};

SampleSatellite sample(const std::string& name) {
    static const auto catalogue = [] {
        std::ifstream file(VELORAN_SAMPLE_SATELLITES, std::ios::binary);
        const std::string csv{std::istreambuf_iterator<char>(file), {}};
        return readSampleCatalogue(csv).value();
    }();
    for (const auto& satellite : catalogue) {
        if (satellite.name == name) return satellite;
    }
    ADD_FAILURE() << name << " is not in the sample catalogue";
    return {};
}

SampleSatellite madeUp(const std::string& name, std::int64_t id, double inclination,
                       double eccentricity, double meanMotion, double argPerigee, double anomaly,
                       double bstar) {
    return {.name = name,
            .noradId = id,
            .designator = "2020-001A",
            .inclination = inclination,
            .eccentricity = eccentricity,
            .meanMotion = meanMotion,
            .raan = 40,
            .argPerigee = argPerigee,
            .meanAnomaly = anomaly,
            .bstar = bstar,
            .groups = {}};
}

/// Satellites whose elements are published anew every six hours.
struct Constellation {
    std::vector<SampleSatellite> followed;
    std::vector<SampleSatellite> lost;  ///< their elements stay what they were at the start

    /// The newest elements at a time, seconds from the start. Those of the followed ones differ
    /// from the ones before by up to three seconds along the orbit.
    std::string elementsAt(std::int64_t second) const {
        const auto version = second / kRefresh;
        std::vector<SampleSatellite> all;
        for (auto satellite : followed) {
            satellite.meanAnomaly += 0.0333 * static_cast<double>(version % 5 - 2);
            satellite.groups = {"now"};
            all.push_back(std::move(satellite));
        }
        const auto published = [](const std::vector<SampleSatellite>& satellites, Instant epoch) {
            return ommArray(satellites, "now", epoch);
        };
        auto text = published(all, kStart + static_cast<double>(version * kRefresh - kHour));
        if (lost.empty()) return text;
        auto fallen = lost;
        for (auto& satellite : fallen) satellite.groups = {"now"};
        const auto more = published(fallen, kStart - kHour);
        text.back() = ',';
        return text + more.substr(1);
    }
};

Constellation eight() {
    Constellation result;
    for (const auto* name : kEight) result.followed.push_back(sample(name));
    return result;
}

Constellation twenty() {
    auto result = eight();
    for (const auto* name : kMoreLow) result.followed.push_back(sample(name));
    result.followed.push_back(sample("QO-100 (ES'HAIL 2)"));
    result.followed.push_back(madeUp("MOLNIYA", 90001, 62.8, 0.7334, 2.00613, 288, 20, 0));
    result.lost.push_back(madeUp("FALLS SOON", 90002, 95.1, 0.0014, 16.05, 80, 10, 0.004));
    result.lost.push_back(madeUp("FALLS LATE", 90003, 65.0, 0.0018, 15.75, 20, 200, 0.006));
    return result;
}

/// One program through one stretch of time, and what it told.
class Days {
  public:
    Days(Constellation constellation, std::int64_t days, bool refreshes)
        : constellation_(std::move(constellation)),
          refreshes_(refreshes),
          rehearsal_(planFor(constellation_, refreshes), [this](const RehearsalEvent& event) {
              events_.push_back(readEvent(eventLine(event)));
          }) {
        unattended_.seconds = days * kDay;
        unattended_.clock = [this](std::int64_t second) { return clockAt(second); };
    }

    std::int64_t length() const { return unattended_.seconds; }
    std::int64_t now() const { return now_; }
    Rehearsal& rehearsal() { return rehearsal_; }
    const std::vector<RehearsedEvent>& events() const { return events_; }

    void runUntil(std::int64_t second) {
        while (now_ < second) {
            const auto step = std::min(second, (now_ / kRefresh + 1) * kRefresh) - now_;
            // The next reload finds what is published by then.
            if (refreshes_ && (now_ + step) % kRefresh == 0) {
                rehearsal_.setElements(constellation_.elementsAt(now_ + step));
            }
            rehearsal_.advance(step);
            now_ += step;
        }
    }
    bool hasEventSince(double seconds, const std::string& name) const {
        const Instant since = clockAt(now_) - seconds;
        return std::ranges::any_of(events_, [&](const RehearsedEvent& event) {
            return event.event == name && event.at >= since;
        });
    }
    /// The clock is set, or the machine has slept.
    void jump(double seconds) {
        unattended_.sleeps = unattended_.sleeps || seconds > 0;
        jumps_.push_back({now_, seconds});
        rehearsal_.machine().loop.jumpClock(seconds);
    }

    Totals compare(const char* what) {
        searchTheSky();
        const auto totals = expectAsPlain(events_, unattended_);
        fmt::print(
            "{}: {} satellites, {} days: {} of {} due passes started, {} ended; {} queued, {} "
            "conflicts, {} skipped\n",
            what, rehearsal_.satelliteCount(), length() / kDay, totals.started, totals.due,
            totals.ended, totals.queued, totals.conflicts, totals.skipped);
        return totals;
    }
    void expectMarkedAtOnce() const { test::expectMarkedAtOnce(events_, unattended_); }
    const Unattended& truth() const { return unattended_; }

  private:
    struct Jump {
        std::int64_t at = 0;
        double seconds = 0;
    };

    static RehearsalPlan planFor(const Constellation& constellation, bool refreshes) {
        RehearsalPlan plan{.elements = constellation.elementsAt(0),
                           .latitude = kSite.latitude,
                           .longitude = kSite.longitude,
                           .altitude = kSite.altitude,
                           .start = kStart,
                           .refreshHours = std::nullopt};
        if (refreshes) plan.refreshHours = static_cast<double>(kRefresh) / kHour;
        return plan;
    }
    Instant clockAt(std::int64_t second) const {
        Instant clock = kStart + static_cast<double>(second);
        for (const auto& jump : jumps_) {
            if (second > jump.at) clock = clock + jump.seconds;
        }
        return clock;
    }
    /// Each set of elements is looked through from well before it comes into force, so that what is
    /// up by then is seen whole, to beyond the last pass that the program can know of by it.
    void searchTheSky() {
        constexpr double kBefore = 14.0 * kHour;
        constexpr double kBehind = 26.0 * kHour;
        unattended_.skies.clear();
        const auto period = refreshes_ ? kRefresh : length();
        for (std::int64_t second = 0; second < length(); second += period) {
            const Instant since = clockAt(second);
            const Instant last = clockAt(std::min(second + period, length()));
            unattended_.skies.push_back(trueSky(constellation_.elementsAt(second), kSite, since,
                                                since - kBefore, last + kBehind));
        }
    }

    Constellation constellation_;
    bool refreshes_;
    std::vector<RehearsedEvent> events_;
    std::vector<Jump> jumps_;
    std::int64_t now_ = 0;
    Unattended unattended_;
    Rehearsal rehearsal_;
};

TEST(Unattended, AWeekOfEightSatellitesHoldsEverySessionThatIsDue) {
    const RunningCase running("seven days of eight satellites", mostSeconds());
    Days week(eight(), days(7), false);
    week.runUntil(week.length());
    const auto totals = week.compare("a week");
    week.expectMarkedAtOnce();
    EXPECT_EQ(totals.started, totals.due);
    EXPECT_GT(totals.due, 25u * static_cast<unsigned>(week.length() / kDay));
    EXPECT_GT(totals.conflicts, 0u);
}

/// Lets the days go by, and the clock jump about every so many seconds: in the middle of passes and
/// between them. Not around a reload, so that there is no doubt which elements were in force, and
/// not right behind a set, which a clock set back would bring a second time.
void runWithJumps(Days& days, std::int64_t period, double seconds) {
    constexpr std::int64_t kApart = 120;
    for (std::int64_t next = period; next < days.length(); next += period) {
        const auto sinceRefresh = next % kRefresh;
        if (sinceRefresh < kApart || sinceRefresh > kRefresh - kApart) continue;
        days.runUntil(next);
        if (!days.hasEventSince(kApart, "ended")) days.jump(seconds);
    }
    days.runUntil(days.length());
}

TEST(Unattended, TwentySatellitesOfAllKindsWithNewElementsEverySixHours) {
    const RunningCase running("twenty satellites with reloads", mostSeconds());
    Days month(twenty(), days(2), true);
    month.runUntil(month.length());
    const auto totals = month.compare("reloads");
    EXPECT_EQ(totals.started, totals.due);
    EXPECT_GT(totals.due, 20u * static_cast<unsigned>(month.length() / kDay));
}

TEST(Unattended, ClockSetBackAMinute) {
    const RunningCase running("clock set back", mostSeconds());
    Days month(twenty(), days(1), true);
    runWithJumps(month, 2003, -60);
    const auto totals = month.compare("clock set back");
    EXPECT_EQ(totals.started, totals.due);
}

TEST(Unattended, MachineSleepsForTwentyMinutes) {
    const RunningCase running("suspended", mostSeconds());
    Days month(twenty(), days(1), true);
    runWithJumps(month, 4001, 20 * 60);
    const auto totals = month.compare("suspended");
    EXPECT_EQ(totals.started, totals.due);
}

/// A radio server that dies in every third pass, a minute after the rise, and comes back before or
/// after the set.
class DyingRadio {
  public:
    explicit DyingRadio(Days& days) : days_(days), link_(days.rehearsal().machine()) {
        days.rehearsal().machine().http.special = [](const std::string& url, const auto&) {
            return channelsOf(url);
        };
        days.rehearsal().app().refreshTransmittersFromSatNOGS();
    }

    void run() {
        while (days_.now() < days_.length() && !::testing::Test::HasFailure()) {
            days_.runUntil(days_.now() + 1);
            readEvents();
            if (days_.now() == dies_) {
                link_.reachable = false;
                link_.fail();
                ++deaths_;
            }
            if (days_.now() == dies_ + kGone) link_.reachable = true;
            link_.serve();
        }
        EXPECT_EQ(link_.misdirected(), 0u);
        EXPECT_GE(deaths_, sessions_ / 3 - 1);
        EXPECT_GE(withChannel_, sessions_ - 1);  // all but what was up before channels were there
    }

  private:
    static constexpr std::int64_t kGone = 240;
    static constexpr std::int64_t kLostAtEnds = 8;  // until the link is up and armed

    static std::optional<ScriptedHttp::Answer> channelsOf(const std::string& url) {
        constexpr std::string_view kNumber = "satellite__norad_cat_id=";
        const auto place = url.find(kNumber);
        if (place == std::string::npos) return std::nullopt;
        const auto number = url.substr(place + kNumber.size());
        return ScriptedHttp::Answer{fmt::format(
            R"([{{"description":"FM","alive":true,"type":"Transmitter","downlink_low":435610000,)"
            R"("mode":"FM","norad_cat_id":{}}}])",
            number)};
    }

    void readEvents() {
        for (; read_ < days_.events().size(); ++read_) {
            const auto& event = days_.events()[read_];
            if (event.event == "ended") end();
            if (event.event == "started") start();
        }
    }
    void start() {
        started_ = days_.now();
        link_.server.heard.clear();
        hasChannel_ = days_.rehearsal().app().selectedTransmitter.get().has_value();
        withChannel_ += hasChannel_ ? 1 : 0;
        if (++sessions_ % 3 == 0) dies_ = started_ + 60;
    }
    void end() {
        if (!hasChannel_) return;
        const auto length = days_.now() - started_;
        const bool died = dies_ >= started_ && dies_ < days_.now();
        const auto lost = died ? std::min(kGone, days_.now() - dies_) : 0;
        const bool stillGone = started_ < dies_ + kGone && dies_ < started_;
        const auto expected = length - lost - kLostAtEnds - (stillGone ? kGone : 0);
        EXPECT_GE(static_cast<std::int64_t>(link_.server.countOf("\\sat_dl")), expected)
            << "in the session that ended at " << days_.now();
        EXPECT_LE(static_cast<std::int64_t>(link_.server.countOf("\\sat_dl")), length + 1);
    }

    Days& days_;
    RadioLink link_;
    std::size_t read_ = 0;
    std::size_t sessions_ = 0;
    std::size_t deaths_ = 0;
    bool hasChannel_ = false;
    std::size_t withChannel_ = 0;
    std::int64_t started_ = 0;
    std::int64_t dies_ = -kDay;
};

TEST(Unattended, RadioServerDiesInEveryThirdPass) {
    const RunningCase running("dying radio", mostSeconds());
    Days month(twenty(), days(1), true);
    DyingRadio radio(month);
    radio.run();
    const auto totals = month.compare("dying radio");
    EXPECT_EQ(totals.started, totals.due);
}

}  // namespace
}  // namespace veloran::test
