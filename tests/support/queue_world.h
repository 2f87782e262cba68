#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "core/pass_queue.h"
#include "support/core_world.h"

namespace veloran::test {

/// A pass without a track: all that the queue looks at.
inline PredictedPass passFrom(Instant rise, double seconds, double maxElevation = 45) {
    PredictedPass pass;
    pass.riseTime = rise;
    pass.peakTime = rise + seconds / 2;
    pass.setTime = rise + seconds;
    pass.duration = seconds;
    pass.maxElevation = maxElevation;
    return pass;
}

/// A core with bodies whose passes the test gives. They have no orbit, so that a computation of
/// passes leaves them alone, and one channel each.
struct QueueWorld : CoreWorld {
    SatellitePtr add(std::int64_t id, const std::string& name, PassList passes) {
        auto body = std::make_shared<Satellite>(name, id);
        body->transmitters = {channel(145e6 + static_cast<double>(id))};
        body->isSelected = true;
        body->passes = std::make_shared<const PassList>(std::move(passes));
        auto bodies = app->satellites.get();
        bodies.push_back(body);
        app->satellites = std::move(bodies);
        return body;
    }
    Instant now() const { return machine.loop.now(); }
    void runUntil(Instant when) { machine.loop.advance(when - now()); }
};

}  // namespace veloran::test
