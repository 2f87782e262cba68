#include <benchmark/benchmark.h>

#include "rig/line_framer.h"
#include "rig/reply_queue.h"
#include "support/core_world.h"
#include "synthetic_catalogue.h"

namespace veloran::bench {
namespace {

/// From the timer's action to bytes handed to the connection, with two channels and SAT_PROTO.
void oneTickWithBothChannels(benchmark::State& state) {
    test::CoreWorld world;
    world.start();
    const auto body = std::make_shared<Satellite>("SYNTHETIC", 90001);
    body->satrec = records(lowOrbits(1)).front();
    body->transmitters = {test::channel(145.9e6, "down", "USB"),
                          test::channel(435.1e6, "up", "LSB")};
    world.trackArmed(body, body->transmitters.front());
    auto& connection = world.machine.tcp.newest();
    std::size_t sent = 0;
    for (auto _ : state) {
        world.app->updateTracking();
        state.PauseTiming();
        sent += connection.sent.size();
        connection.sent.clear();
        world.serverSays("RPRT 0\nRPRT 0\n");
        state.ResumeTiming();
    }
    state.counters["lines/tick"] =
        static_cast<double>(sent) / static_cast<double>(state.iterations());
}
BENCHMARK(oneTickWithBothChannels);

void matching10000Replies(benchmark::State& state) {
    std::string bytes;
    for (int i = 0; i < 10000; ++i) bytes += "RPRT 0\n";
    constexpr std::size_t kPiece = 4096;
    for (auto _ : state) {
        LineFramer framer;
        ReplyQueue replies;
        std::size_t answered = 0;
        for (int i = 0; i < 10000; ++i) {
            replies.expect([&answered](std::int64_t, const ReplyLines&) { ++answered; });
        }
        for (std::size_t at = 0; at < bytes.size(); at += kPiece) {
            auto piece = std::string_view(bytes).substr(at, kPiece);
            while (auto line = framer.takeLine(piece)) {
                if (const auto answer = replies.dispatch(*line)) {
                    answer->completion(answer->code, answer->lines);
                }
            }
        }
        if (answered != 10000) state.SkipWithError("a reply is missing");
    }
}
BENCHMARK(matching10000Replies)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace veloran::bench
