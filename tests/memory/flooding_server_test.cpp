// What a server that floods makes the program hold, and what it makes it do in one turn of the
// loop: counted in bytes, since time depends on the machine.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "counted_memory.h"
#include "rig/rigctld_client.h"
#include "support/simulated_machine.h"

namespace veloran::test {
namespace {

constexpr std::size_t kPiece = 4096;  // what the client takes at a time
constexpr std::int64_t kFlood = 4'000'000;

/// A loop that notes the most that one task allocates, and the most that it lets go of.
class CountingLoop final : public MainLoop {
  public:
    explicit CountingLoop(MainLoop& loop) : loop_(loop) {}
    void post(Task task) override { loop_.post(counted(std::move(task))); }
    void after(double seconds, Task task) override {
        ++laterTasks;
        loop_.after(seconds, counted(std::move(task)));
    }
    std::unique_ptr<Timer> every(double seconds, Task task) override {
        return loop_.every(seconds, counted(std::move(task)));
    }

    std::int64_t mostGiven = 0;
    std::int64_t mostReleased = 0;
    int laterTasks = 0;

  private:
    Task counted(Task task) {
        return [this, task = std::move(task)]() mutable {
            const auto given = givenBytes;
            const auto live = liveBytes;
            task();
            task = nullptr;  // what it holds is let go of by it
            mostGiven = std::max(mostGiven, givenBytes - given);
            mostReleased = std::max(mostReleased, live - liveBytes);
        };
    }
    MainLoop& loop_;
};

/// A client whose probe waits, and the server at the other end.
struct FloodedClient {
    FloodedClient() {
        client->connect("radio.test", 4532, nullptr);
        machine.tcp.newest().report(TcpState::ready);
        machine.loop.runPosted();
    }
    void receive(std::string_view bytes) {
        machine.tcp.newest().deliver(std::string(bytes));
        machine.loop.runPosted();
    }

    SimulatedMachine machine;
    CountingLoop loop{machine.loop};
    std::shared_ptr<RigctldClient> client = RigctldClient::create(machine.tcp, loop);
};

struct Flood {
    friend void PrintTo(const Flood& flood, std::ostream* out) { *out << flood.name; }

    const char* name;
    std::string pattern;  // repeated without end
    bool isKept = true;   // the text too, not only that there were lines
};

std::string randomBytes(std::size_t count) {
    std::mt19937 random(7);
    std::string bytes(count, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() & 0xFF);
    return bytes;
}

std::vector<Flood> floods() {
    const std::string blanks(140'000, ' ');
    return {{"line feeds", "\n"},
            {"an endless line", "x"},
            {"endless blanks", " "},
            {"an endless line of two-byte characters", "\u00FC"},
            {"another program's bytes", randomBytes(1'000'003), false},
            {"short lines", "x\n"},
            {"lines of a receive's length", std::string(4095, 'x') + "\n"},
            {"lines as long as a block", std::string(BlockText::kBlock, 'x') + "\n"},
            {"long lines", std::string(BlockText::kLong, 'x') + "\n"},
            {"lines a little longer", std::string(BlockText::kLong + 60, 'x') + "\n"},
            {"long lines of little", blanks + "x" + blanks + "\n", false},
            {"long lines that are no text", blanks + "\xFF\n", false}};
}

/// The flood's bytes, cut as they come.
class Stream {
  public:
    explicit Stream(const std::string& pattern) {
        while (bytes_.size() < pattern.size() + kPiece) bytes_ += pattern;
        period_ = pattern.size();
    }
    std::string_view next() {
        const auto piece = std::string_view(bytes_).substr(at_, kPiece);
        at_ = (at_ + kPiece) % period_;
        return piece;
    }

  private:
    std::string bytes_;
    std::size_t period_ = 0;
    std::size_t at_ = 0;
};

class FloodingServer : public testing::TestWithParam<Flood> {};

INSTANTIATE_TEST_SUITE_P(All, FloodingServer, testing::ValuesIn(floods()), [](const auto& flood) {
    std::string name = flood.param.name;
    for (char& c : name) {
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    }
    return name;
});

TEST_P(FloodingServer, AByteReceivedCostsAtMostTwo) {
    Stream stream(GetParam().pattern);
    FloodedClient world;
    const auto before = liveBytes;
    std::int64_t received = 0;
    while (received < kFlood) {
        const auto piece = stream.next();
        world.receive(piece);
        received += static_cast<std::int64_t>(piece.size());
        ASSERT_LE(liveBytes - before, 2 * received + 4096) << "after " << received;
    }
    // To allocate is the least that copying takes.
    EXPECT_LT(world.loop.mostGiven, 400'000);
}

TEST_P(FloodingServer, WhatItSentIsLetGoOfLittleByLittle) {
    constexpr std::int64_t kMost = 1'500'000;
    for (const bool ends : {true, false}) {
        Stream stream(GetParam().pattern);
        FloodedClient world;
        const auto before = liveBytes;
        for (std::int64_t received = 0; received < kFlood; received += kPiece) {
            world.receive(stream.next());
        }
        if (ends) {
            world.receive("\nRPRT 0\n");
        } else {
            world.machine.tcp.newest().report(TcpState::failed);
            world.machine.loop.runPosted();
        }
        world.machine.loop.advance(0);
        EXPECT_EQ(world.client->pendingResponses(), 0u);
        EXPECT_LT(world.loop.mostReleased, kMost);
        EXPECT_LT(liveBytes - before, 100'000);
    }
}

/// What was received long ago is never looked at again: neither at the end of an endless line, nor
/// at that of an endless reply, nor when it is let go of.
TEST_P(FloodingServer, NoTurnLooksBack) {
    constexpr int kPieces = 1000;
    for (const bool ends : {true, false}) {
        Stream stream(GetParam().pattern);
        FloodedClient world;
        LockedBlocks blocks;
        for (int i = 0; i < kPieces; ++i) {
            world.receive(stream.next());
            blocks.lockOld();
        }
        if (GetParam().isKept) {
            EXPECT_GT(blocks.count(), 10u);
        }
        if (ends) {
            world.receive("\nRPRT 0\n");
            EXPECT_EQ(world.client->protocolMode(), RigProtocolMode::classic);
        } else {
            world.machine.tcp.newest().report(TcpState::failed);
        }
        world.machine.loop.advance(0);
        EXPECT_EQ(world.client->pendingResponses(), 0u);
        EXPECT_EQ(blocks.count(), 0u);
    }
}

TEST(FloodingServerAnnouncement, IsFoundBehindMillionsOfLines) {
    FloodedClient world;
    for (int i = 0; i < 1000; ++i) world.receive(std::string(kPiece, '\n'));
    world.receive("SAT_PROTO=1\n");
    world.receive(std::string(kPiece, '\n'));
    world.receive("RPRT 0\n");
    EXPECT_EQ(world.client->protocolMode(), RigProtocolMode::satProtoV1);
}

}  // namespace
}  // namespace veloran::test
