#include "servers/radio_dialect.h"

#include <gtest/gtest.h>

namespace veloran {
namespace {

TEST(RadioDialect, CapabilitiesNameTheProtocolAndEndWithACode) {
    RadioDialect radio;
    EXPECT_EQ(radio.reply(1, "\\sat_caps"), "SAT_PROTO=1\nMODEL=Simulated radio\nEND\nRPRT 0\n");
}

TEST(RadioDialect, UpdatesAreRefusedUntilArmed) {
    RadioDialect radio;
    EXPECT_EQ(radio.reply(1, "\\sat_dl 145800000 -1234.568 12.500"), "RPRT -11\n");
    EXPECT_FALSE(radio.downlink());
    EXPECT_EQ(radio.reply(1, "\\sat_aos ISS_(ZARYA)"), "RPRT 0\n");
    EXPECT_EQ(radio.armedName(), "ISS_(ZARYA)");
    EXPECT_EQ(radio.reply(1, "\\sat_dl 145800000 -1234.568 12.500"), "RPRT 0\n");
    EXPECT_DOUBLE_EQ(radio.downlink()->tunedHz(), 145798765.432);
    EXPECT_EQ(radio.downlink()->rateHzS, 12.5);
}

TEST(RadioDialect, TwoFieldUpdateHasNoRate) {
    RadioDialect radio;
    radio.reply(1, "\\sat_aos X");
    EXPECT_EQ(radio.reply(1, "\\sat_ul 435000000 0"), "RPRT 0\n");
    EXPECT_EQ(radio.uplink()->rateHzS, std::nullopt);
}

TEST(RadioDialect, SecondClientTakesTheArmingAway) {
    RadioDialect radio;
    radio.reply(1, "\\sat_aos A");
    radio.reply(2, "\\sat_aos B");
    EXPECT_EQ(radio.reply(1, "\\sat_dl 1 2 3"), "RPRT -11\n");
    EXPECT_EQ(radio.reply(2, "\\sat_dl 1 2 3"), "RPRT 0\n");
}

TEST(RadioDialect, StolenRadioAnswersUpdatesWithMinusElevenUntilArmedAnew) {
    RadioDialect radio;
    radio.reply(1, "\\sat_aos A");
    radio.steal();
    EXPECT_EQ(radio.reply(1, "\\sat_ul 1 2 3"), "RPRT -11\n");
    radio.reply(1, "\\sat_aos A");
    EXPECT_EQ(radio.reply(1, "\\sat_ul 1 2 3"), "RPRT 0\n");
}

TEST(RadioDialect, ClientThatGoesIsNoLongerArmed) {
    RadioDialect radio;
    radio.reply(1, "\\sat_aos A");
    radio.clientGone(2);
    EXPECT_TRUE(radio.isArmed());
    radio.clientGone(1);
    EXPECT_FALSE(radio.isArmed());
}

TEST(RadioDialect, RefusedUplinkLeavesTheDownlinkAlone) {
    RadioDialect radio;
    radio.refuseUplink(true);
    radio.reply(1, "\\sat_aos A");
    EXPECT_EQ(radio.reply(1, "\\sat_ul 1 2 3"), "RPRT -9\n");
    EXPECT_EQ(radio.reply(1, "\\sat_dl 1 2 3"), "RPRT 0\n");
}

TEST(RadioDialect, ClassicCommandsTune) {
    RadioDialect radio(CapsAnswer::notImplemented);
    EXPECT_EQ(radio.reply(1, "F 437123456"), "RPRT 0\n");
    EXPECT_EQ(radio.reply(1, "M USB 2400\r"), "RPRT 0\n");
    EXPECT_EQ(radio.reply(1, "f"), "437123456\n");
    EXPECT_EQ(radio.reply(1, "m"), "USB\n2400\n");
}

TEST(RadioDialect, NonsenseIsRefusedAndChangesNothing) {
    RadioDialect radio;
    radio.reply(1, "\\sat_aos A");
    for (const char* line :
         {"F", "F abc", "F 12.5", "M", "M USB", "M USB x y", "\\sat_dl", "\\sat_dl 1",
          "\\sat_dl 1 x", "\\sat_dl 1 2 3 4", "\\sat_aos", "\\sat_new", "hello"}) {
        EXPECT_EQ(radio.reply(1, line), "RPRT -1\n") << line;
    }
    EXPECT_EQ(radio.frequency(), 145000000);
    EXPECT_FALSE(radio.downlink());
    EXPECT_EQ(radio.reply(1, ""), "");
}

TEST(RadioDialect, ProbeOfAClassicServerIsAnsweredAsAsked) {
    EXPECT_EQ(RadioDialect(CapsAnswer::nothing).reply(1, "\\sat_caps"), "");
    EXPECT_EQ(RadioDialect(CapsAnswer::invalidParam).reply(1, "\\sat_caps"), "RPRT -1\n");
    EXPECT_EQ(RadioDialect(CapsAnswer::notImplemented).reply(1, "\\sat_caps"), "RPRT -4\n");
    EXPECT_EQ(RadioDialect(CapsAnswer::positiveCode).reply(1, "\\sat_caps"), "RPRT 1\n");
    EXPECT_EQ(RadioDialect(CapsAnswer::plainText).reply(1, "\\sat_caps"), "Command not found\n");
    EXPECT_EQ(RadioDialect(CapsAnswer::notImplemented).reply(1, "\\sat_aos A"), "RPRT -1\n");
}

}  // namespace
}  // namespace veloran
