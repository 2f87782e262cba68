#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "support/core_world.h"

// What a computation of passes looks for, and in which order its results come in.

namespace veloran::test {
namespace {

/// A stay above the horizon, from the look angles of every second.
struct PlainPass {
    double rise = 0, set = 0;  // seconds from the start
    double highest = 0;
};

std::vector<PlainPass> plainPasses(const Satellite& body, const AppState& app, Instant start,
                                   double seconds) {
    std::vector<PlainPass> passes;
    bool isUp = false;
    for (double s = 0; s <= seconds; ++s) {
        const double elevation =
            body.observe(start + s, app.obsLatitude, app.obsLongitude, app.obsAltitude)->elevation;
        if (elevation > 0 && !isUp) passes.push_back({s, s, elevation});
        isUp = elevation > 0;
        if (!isUp) continue;
        passes.back().set = s;
        passes.back().highest = std::max(passes.back().highest, elevation);
    }
    return passes;
}

/// Bodies on one orbit, all selected: one of them rises every few minutes.
class PassRuns : public ::testing::Test {
  protected:
    PassRuns() {
        world.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        std::vector<std::int64_t> ids;
        std::string group;
        for (std::int64_t id = 1; id <= 24; ++id) {
            ids.push_back(id);
            group += (id == 1 ? "[" : ",") +
                     ommRecord("BODY " + std::to_string(id), id, 15.0 * static_cast<double>(id));
        }
        world.machine.settings.set("selectedSatIds", ids);
        world.cacheGroup("amateur", group + "]");
        world.start();
        world.app->obsLatitude = 50.0;
        world.app->obsLongitude = 130.0;
        world.load();
    }

    CoreWorld world;
};

TEST_F(PassRuns, ListWhatRisesAboveTwoDegreesWithinADay) {
    constexpr double kDay = 86400;
    const Instant now = world.machine.loop.now();
    int low = 0, lowest = 0, lastHour = 0, beyond = 0;
    for (std::int64_t id = 1; id <= 24; ++id) {
        const auto satellite = world.body(id);
        const PassList& listed = *satellite->passes;
        std::size_t next = 0;
        for (const PlainPass& plain : plainPasses(*satellite, *world.app, now, kDay + 7200)) {
            // Where the steps of the search decide, it may see less than a pass of every second.
            if (std::abs(plain.highest - 2) < 0.05 || plain.rise == 0) {
                next +=
                    next < listed.size() && std::abs(listed[next].setTime - now - plain.set) < 2;
                continue;
            }
            low += plain.highest < 2;
            lowest += plain.highest > 2 && plain.highest < 3;
            if (plain.highest < 2) continue;
            beyond += plain.rise > kDay;
            // What the end cuts to less than 30 seconds is left out; near that a second decides.
            if (plain.rise > kDay - 35) {
                next +=
                    next < listed.size() && std::abs(listed[next].riseTime - now - plain.rise) < 2;
                continue;
            }
            lastHour += plain.rise > kDay - 3600;
            ASSERT_LT(next, listed.size()) << id << " at " << plain.rise;
            EXPECT_NEAR(listed[next].riseTime - now, plain.rise, 2);
            EXPECT_NEAR(listed[next].setTime - now, std::min(plain.set, kDay), 2);
            ++next;
        }
        EXPECT_EQ(next, listed.size()) << id;
    }
    // Passes that another floor or another span would have treated otherwise.
    EXPECT_GT(low, 0);
    EXPECT_GT(lowest, 0);
    EXPECT_GT(lastHour, 0);
    EXPECT_GT(beyond, 0);
}

TEST_F(PassRuns, OlderOneCannotBringBackThePassesOfAnOlderObserver) {
    auto& app = *world.app;
    auto& workers = world.machine.workers;
    const auto satellite = world.body(3);
    app.obsLatitude = -35.0;
    workers.held = true;
    app.computeAllPasses();
    const auto older = workers.takeHeld();
    app.obsLatitude = 60.0;
    app.computeAllPasses();
    workers.release();
    world.machine.loop.runPosted();
    const auto newest = satellite->passes;
    ASSERT_FALSE(newest->empty());
    const auto elevationAtPeak = [&](const PredictedPass& pass) {
        return satellite->observe(pass.peakTime, 60.0, app.obsLongitude, app.obsAltitude)
            ->elevation;
    };
    for (const auto& pass : *newest) {
        EXPECT_NEAR(elevationAtPeak(pass), pass.maxElevation, 1e-9);
    }
    for (const auto& task : older) world.machine.loop.post(task);
    world.machine.loop.runPosted();
    EXPECT_EQ(satellite->passes, newest);
}

TEST_F(PassRuns, AnyOrderOfTheirBodiesEndsWithTheNewestLists) {
    auto& app = *world.app;
    auto& workers = world.machine.workers;
    workers.held = true;
    app.obsLatitude = -35.0;
    app.computeAllPasses();
    const auto older = workers.takeHeld();
    app.obsLatitude = 60.0;
    app.computeAllPasses();
    const auto newer = workers.takeHeld();
    workers.held = false;
    ASSERT_EQ(older.size(), newer.size());
    // Of every other body the older search ends first.
    for (std::size_t i = 0; i < older.size(); ++i) {
        for (const auto& task :
             i % 2 ? std::array{older[i], newer[i]} : std::array{newer[i], older[i]}) {
            world.machine.loop.post(task);
        }
    }
    world.machine.loop.runPosted();
    for (std::int64_t id = 1; id <= 24; ++id) {
        const auto satellite = world.body(id);
        for (const auto& pass : *satellite->passes) {
            const auto look =
                satellite->observe(pass.peakTime, 60.0, app.obsLongitude, app.obsAltitude);
            EXPECT_NEAR(look->elevation, pass.maxElevation, 1e-9) << id;
        }
    }
}

TEST_F(PassRuns, EndWithTheListsThenTheWords) {
    auto& app = *world.app;
    app.computeAllPasses();
    std::vector<std::string> seen;
    const auto subscription =
        app.objectWillChange.subscribe([&] { seen.push_back(app.statusMessage); });
    world.machine.loop.runPosted();
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0], "Computing passes for 24 satellites...") << "told before the lists";
    EXPECT_EQ(seen[1], "Computing passes for 24 satellites...") << "told before it changes";
    EXPECT_NE(app.statusMessage.get(), seen[1]);
}

TEST_F(PassRuns, ProgressIsOverBeforeTheListsAreTold) {
    auto& app = *world.app;
    std::vector<SatellitePtr> many;
    for (std::int64_t id = 1; id <= 200; ++id) {
        auto body = std::make_shared<Satellite>("Sun", id);
        body->bodyKind = BodyKind::sun;
        body->isSelected = true;
        many.push_back(std::move(body));
    }
    app.satellites = many;
    app.computeAllPasses();
    std::vector<std::optional<double>> seen;
    const auto subscription =
        app.objectWillChange.subscribe([&] { seen.push_back(app.passProgress); });
    world.machine.loop.runPosted();
    ASSERT_GT(seen.size(), 3u);
    EXPECT_TRUE(seen[seen.size() - 3]) << "the end of the progress, told before it changes";
    EXPECT_FALSE(seen[seen.size() - 2]) << "the lists";
    EXPECT_FALSE(seen[seen.size() - 1]) << "the words";
}

TEST_F(PassRuns, ProgressOfAnOlderOneIsNotShown) {
    auto& app = *world.app;
    std::vector<SatellitePtr> many;
    for (std::int64_t id = 1; id <= 300; ++id) {
        auto body = std::make_shared<Satellite>("Sun", id);
        body->bodyKind = BodyKind::sun;
        body->isSelected = true;
        many.push_back(std::move(body));
    }
    app.satellites = many;
    auto& workers = world.machine.workers;
    workers.held = true;
    app.computeAllPasses();
    const auto older = workers.takeHeld();
    app.computeAllPasses();
    ASSERT_EQ(app.passProgress.get(), 0.0);
    for (const auto& task : older) world.machine.loop.post(task);
    world.machine.loop.runPosted();
    EXPECT_EQ(app.passProgress.get(), 0.0);
    workers.release();
    world.machine.loop.runPosted();
    EXPECT_EQ(app.passProgress.get(), std::nullopt);
}

}  // namespace
}  // namespace veloran::test
