#include <gtest/gtest.h>

#include "core/status_texts.h"
#include "support/core_world.h"

namespace veloran::test {
namespace {

class Passes : public ::testing::Test {
  protected:
    Passes() {
        world.machine.settings.set("tleCategories", std::vector<std::string>{"amateur"});
        world.machine.settings.set("selectedSatIds", std::vector<std::int64_t>{44909});
        world.cacheGroup("amateur", ommGroup({{"RS-44", 44909}, {"SO-50", 27607}}));
        world.start();
        world.load();
    }

    CoreWorld world;
};

TEST_F(Passes, OfTheNextDayAboveTwoDegreesAreFound) {
    const auto& passes = *world.body(44909)->passes;
    const Instant now = world.machine.loop.now();
    ASSERT_GT(passes.size(), 2u);
    for (const auto& pass : passes) {
        EXPECT_GT(pass.setTime, now);
        EXPECT_LT(pass.riseTime, now + 86400);
        EXPECT_GT(pass.maxElevation, 1.9);
    }
    EXPECT_TRUE(world.body(27607)->passes->empty());
}

TEST_F(Passes, BodiesWithoutAnOrbitKeepTheirPassesAndCountInTheFirstText) {
    auto bare = std::make_shared<Satellite>("BARE", 5);
    bare->isSelected = true;
    bare->passes = std::make_shared<const PassList>(PassList(3));
    const std::size_t others = world.body(44909)->passes->size();
    world.app->satellites = std::vector<SatellitePtr>{world.body(44909), bare};
    world.app->computeAllPasses();
    EXPECT_EQ(world.app->statusMessage.get(), "Computing passes for 2 satellites...");
    world.machine.loop.runPosted();
    EXPECT_EQ(bare->passes->size(), 3u);
    EXPECT_EQ(world.app->statusMessage.get(), statusPasses(others + 3));
}

TEST_F(Passes, EmptySelectionStillGoesThroughBothTexts) {
    world.app->satellites = std::vector<SatellitePtr>{};
    world.app->computeAllPasses();
    EXPECT_EQ(world.app->statusMessage.get(), "Computing passes for 0 satellites...");
    world.machine.loop.runPosted();
    EXPECT_EQ(world.app->statusMessage.get(), "0 passes in next 24h");
}

TEST_F(Passes, RunKeepsTheSelectionTimeAndObserverOfItsStart) {
    const PassList before = *world.body(44909)->passes;
    world.machine.workers.held = true;
    world.app->computeAllPasses();
    world.body(27607)->isSelected = true;
    world.app->obsLatitude = -40.0;
    world.machine.loop.jumpClock(43200);
    world.machine.workers.release();
    world.machine.loop.runPosted();
    EXPECT_TRUE(world.body(27607)->passes->empty());
    ASSERT_EQ(world.body(44909)->passes->size(), before.size());
    EXPECT_EQ(world.body(44909)->passes->front().riseTime, before.front().riseTime);
}

TEST_F(Passes, ViewsAreToldWhenAllListsAreThere) {
    std::size_t told = 0;
    world.app->toggleSatellite(world.body(27607));
    const auto subscription = world.app->objectWillChange.subscribe([&] {
        ++told;
        EXPECT_FALSE(world.body(27607)->passes->empty());
    });
    world.machine.loop.runPosted();
    EXPECT_EQ(told, 2u);  // the lists, then the status line
}

TEST_F(Passes, SnapshotOfAListOutlivesItsReplacement) {
    const auto snapshot = world.body(44909)->passes;
    const std::size_t size = snapshot->size();
    world.app->computeAllPasses();
    world.machine.loop.runPosted();
    EXPECT_NE(world.body(44909)->passes, snapshot);
    EXPECT_EQ(snapshot->size(), size);
}

TEST_F(Passes, PickedPassStaysThroughANewComputation) {
    PassInfo picked;
    picked.satellite = world.body(44909);
    picked.pass = picked.satellite->passes->front();
    const auto id = picked.id;
    world.app->selectedPass = picked;
    world.machine.loop.jumpClock(43200);
    world.app->toggleSatellite(picked.satellite);
    world.machine.loop.runPosted();
    EXPECT_EQ(world.app->selectedPass.get()->id, id);
    EXPECT_FALSE(picked.satellite->passes->empty());  // kept, though out of view
    EXPECT_TRUE(world.app->allPassesSorted().empty());
}

TEST_F(Passes, TogglingSelectsStoresAndComputes) {
    world.app->toggleSatellite(world.body(27607));
    EXPECT_TRUE(world.body(27607)->isSelected);
    EXPECT_EQ(world.machine.settings.integers("selectedSatIds"),
              (std::vector<std::int64_t>{27607, 44909}));
    EXPECT_EQ(world.app->statusMessage.get(), "Computing passes for 2 satellites...");
    world.app->toggleSatellite(world.body(27607));
    EXPECT_EQ(world.app->selectedSatelliteIds.get(), std::set<std::int64_t>{44909});
}

TEST_F(Passes, ManyTogglesAreOneChange) {
    const std::vector<SatellitePtr> both{world.body(27607), world.body(44909)};
    std::size_t told = 0;
    const auto subscription = world.app->objectWillChange.subscribe([&told] { ++told; });
    world.app->toggleSatellites(both);
    EXPECT_EQ(told, 3u);  // the identifiers, the bodies, the status line
    EXPECT_TRUE(world.body(27607)->isSelected);
    EXPECT_FALSE(world.body(44909)->isSelected);
    EXPECT_EQ(world.app->selectedSatelliteIds.get(), std::set<std::int64_t>{27607});
    EXPECT_EQ(world.app->statusMessage.get(), "Computing passes for 1 satellites...");

    world.app->toggleSatellites({});
    EXPECT_EQ(told, 3u) << "nothing to toggle changes nothing";
}

TEST_F(Passes, LongSearchTellsItsProgress) {
    std::vector<SatellitePtr> many;
    for (std::int64_t id = 1; id <= 400; ++id) {
        auto body = std::make_shared<Satellite>("Sun", id);
        body->bodyKind = BodyKind::sun;
        many.push_back(std::move(body));
    }
    world.app->satellites = many;
    world.machine.workers.held = true;
    world.app->toggleSatellites(many);
    EXPECT_EQ(world.app->passProgress.get(), 0.0);

    std::vector<double> shown;
    const auto subscription = world.app->objectWillChange.subscribe([&] {
        const auto& share = world.app->passProgress.get();
        if (share && (shown.empty() || *share > shown.back())) shown.push_back(*share);
    });
    world.machine.workers.release();
    world.machine.loop.runPosted();
    EXPECT_EQ(shown.size(), 100u) << "one change a percent";
    EXPECT_EQ(shown.back(), 0.99);
    EXPECT_EQ(world.app->passProgress.get(), std::nullopt);
}

TEST_F(Passes, OfTheSelectedPassAndOfTheQueueAreSearchedFirst) {
    std::vector<SatellitePtr> many;
    for (std::int64_t id = 1; id <= 400; ++id) {
        auto body = std::make_shared<Satellite>("Sun", id);
        body->bodyKind = BodyKind::sun;
        body->isSelected = true;
        many.push_back(std::move(body));
    }
    world.app->satellites = many;
    PassInfo shown;
    shown.satellite = many[399];
    world.app->selectedPass = shown;
    world.app->queuedPassIds = QueueIds{"399-817000000", "nonsense"};
    world.app->computeAllPasses();

    bool isLooking = true;
    const auto subscription = world.app->objectWillChange.subscribe([&] {
        if (!isLooking) return;
        isLooking = false;  // with the first percent: 4 of the 400 are done
        EXPECT_GT(many[399]->passRun, 0u);
        EXPECT_GT(many[398]->passRun, 0u);
        EXPECT_GT(many[1]->passRun, 0u);
        EXPECT_EQ(many[2]->passRun, 0u);
    });
    world.machine.loop.runPosted();
    EXPECT_FALSE(isLooking);
    for (const auto& body : many) EXPECT_GT(body->passRun, 0u);
}

TEST_F(Passes, SearchOfFewBodiesTellsNoProgress) {
    world.machine.workers.held = true;
    world.app->computeAllPasses();
    EXPECT_EQ(world.app->passProgress.get(), std::nullopt);
    world.machine.workers.release();
}

TEST_F(Passes, AllPassesAreSortedByRise) {
    world.app->toggleSatellite(world.body(27607));
    world.machine.loop.runPosted();
    const auto all = world.app->allPassesSorted();
    ASSERT_GT(all.size(), world.body(44909)->passes->size());
    for (std::size_t i = 1; i < all.size(); ++i) {
        EXPECT_LE(all[i - 1].second.riseTime, all[i].second.riseTime);
    }
}

TEST_F(Passes, RunningComputationOutlivesTheState) {
    world.machine.workers.held = true;
    world.app->computeAllPasses();
    const auto satellite = world.body(44909);
    const auto passes = satellite->passes;
    world.app.reset();
    world.machine.workers.release();
    world.machine.loop.runPosted();
    EXPECT_EQ(satellite->passes, passes);
}

TEST_F(Passes, CachedLookAnglesAreThoseAtTheStartOfTheQuarterSecond) {
    const auto satellite = world.body(44909);
    const Instant now = world.machine.loop.now();
    const auto cached = world.app->cachedObserve(*satellite, now + 0.2, 30);
    const auto exact = satellite->observe(now + 30, world.app->obsLatitude, world.app->obsLongitude,
                                          world.app->obsAltitude);
    ASSERT_TRUE(cached && exact);
    EXPECT_EQ(cached->azimuth, exact->azimuth);
}

}  // namespace
}  // namespace veloran::test
