#include <gtest/gtest.h>

#include "core/pass_queue.h"
#include "support/vectors.h"

namespace veloran {
namespace {

using namespace test;
namespace json = boost::json;

PredictedPass readPass(const json::value& value) {
    const auto& object = value.as_object();
    expectKnownMembers(object, {"riseTime", "setTime", "maxElevation"}, "pass");
    PredictedPass pass;
    pass.riseTime = Instant{number(object.at("riseTime"))};
    pass.setTime = Instant{number(object.at("setTime"))};
    pass.maxElevation = number(object.at("maxElevation"));
    return pass;
}

std::shared_ptr<const PassList> readPasses(const json::value& value) {
    auto passes = std::make_shared<PassList>();
    for (const auto& pass : value.as_array()) passes->push_back(readPass(pass));
    return passes;
}

std::vector<QueueBody> readBodies(const json::value& value) {
    std::vector<QueueBody> bodies;
    for (const auto& element : value.as_array()) {
        const auto& object = element.as_object();
        expectKnownMembers(object, {"noradId", "name", "passes"}, "satellite");
        const auto* name = object.if_contains("name");
        bodies.push_back({object.at("noradId").to_number<std::int64_t>(),
                          name ? std::string(name->as_string()) : std::string(),
                          readPasses(object.at("passes"))});
    }
    return bodies;
}

QueueIds readIds(const json::value& value) {
    QueueIds ids;
    for (const auto& id : value.as_array()) ids.emplace(id.as_string());
    return ids;
}

void checkRef(const QueuedPassRef& ref, const json::object& expected) {
    expectKnownMembers(expected,
                       {"id", "satName", "noradId", "riseTime", "setTime", "maxElevation"}, "ref");
    if (const auto* id = expected.if_contains("id")) {
        EXPECT_EQ(ref.id, id->as_string());
    }
    if (const auto* name = expected.if_contains("satName")) {
        EXPECT_EQ(ref.satName, name->as_string());
    }
    EXPECT_EQ(ref.noradId, expected.at("noradId").to_number<std::int64_t>());
    EXPECT_EQ(ref.riseTime.secondsSinceReference, number(expected.at("riseTime")));
    EXPECT_EQ(ref.setTime.secondsSinceReference, number(expected.at("setTime")));
    EXPECT_EQ(ref.maxElevation, number(expected.at("maxElevation")));
}

std::optional<QueueBody> trackedBody(const json::object& c, const std::vector<QueueBody>& bodies) {
    if (!c.at("isTracking").as_bool() || c.at("trackingId").is_null()) return std::nullopt;
    const auto id = c.at("trackingId").to_number<std::int64_t>();
    for (const auto& body : bodies) {
        if (body.noradId == id) return body;
    }
    const auto* passes = c.if_contains("trackedPasses");
    return QueueBody{id, "", passes ? readPasses(*passes) : std::make_shared<const PassList>()};
}

void checkStep(const json::object& c) {
    expectKnownMembers(c,
                       {"id", "note", "function", "now", "isTracking", "trackingId", "selected",
                        "queued", "minAutoTrackElevation", "trackedPasses", "expected"},
                       "step");
    const auto queued = readIds(c.at("queued"));
    const auto bodies = readBodies(c.at("selected"));
    const QueueView view{bodies, trackedBody(c, bodies), queued,
                         number(c.at("minAutoTrackElevation"))};
    const auto decision = decideQueue(view, Instant{number(c.at("now"))});
    const auto& expected = c.at("expected").as_object();
    expectKnownMembers(expected, {"stopped", "started", "queued"}, "expected");
    EXPECT_EQ(decision.stop, expected.at("stopped").as_bool());
    const auto& started = expected.at("started");
    ASSERT_EQ(decision.start.has_value(), !started.is_null());
    if (decision.start) {
        const auto& body = bodies[decision.start->body];
        EXPECT_EQ(body.noradId, started.as_object().at("noradId").to_number<std::int64_t>());
        EXPECT_EQ((*body.passes)[decision.start->pass].riseTime.secondsSinceReference,
                  number(started.as_object().at("riseTime")));
    }
    // A decision cannot change the queue.
    if (const auto* after = expected.if_contains("queued")) {
        EXPECT_EQ(queued, readIds(*after));
    }
}

void check(const json::object& c) {
    const std::string_view function = c.at("function").as_string();
    if (function == "passQueueId") {
        EXPECT_EQ(passQueueId(c.at("noradId").to_number<std::int64_t>(),
                              Instant{number(c.at("riseReferenceSeconds"))}),
                  c.at("expected").as_string());
    } else if (function == "overlap") {
        const auto pass = [&c](const char* which) {
            PredictedPass made;
            made.riseTime = Instant{number(c.at(which).at(0))};
            made.setTime = Instant{number(c.at(which).at(1))};
            return made;
        };
        EXPECT_EQ(passesOverlap(pass("first"), pass("second")), c.at("expected").as_bool());
    } else if (function == "makePassRef") {
        checkRef(makePassRef(c.at("noradId").to_number<std::int64_t>(),
                             std::string(c.at("name").as_string()), readPass(c.at("pass"))),
                 c.at("expected").as_object());
    } else if (function == "findConflict") {
        const auto found = findConflict(readBodies(c.at("selected")), readIds(c.at("queued")),
                                        readPass(c.at("incoming")));
        ASSERT_EQ(found.has_value(), !c.at("expected").is_null());
        if (found) checkRef(*found, c.at("expected").as_object());
    } else if (function == "step") {
        checkStep(c);
    } else {
        ADD_FAILURE() << "unknown function " << function;
    }
}

TEST(Vectors, PassQueue) {
    const auto file = loadVectors("data/pass_queue.json");
    expectKnownMembers(file, {"about", "cases"}, "pass_queue.json");
    forEachCase(file, "pass_queue.json", "cases", check);
}

}  // namespace
}  // namespace veloran
