// The program veloran-rehearse as a process, without a display, against a plain search of the sky.

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>

#include "elements/tle_manager.h"
#include "support/unattended.h"

namespace veloran::test {
namespace {

const Site kSite{-33.87, 151.21, 20};
const Instant kStart = Instant::fromUnixSeconds(1795165200);  // 2026-11-20 09:00 UTC

/// Sets in three lines. The last satellite has no name line.
constexpr const char* kLines =
    "RS-44 (DOSAAF-85)\n"
    "1 44909U 19096E   26323.50000000  .00000000  00000-0  40000-4 0  9990\n"
    "2 44909  82.5200 151.0000 0217000  33.0000 328.0000 12.79700000 12340\n"
    "SO-50 \"QUOTED\"\\\n"
    "1 27607U 02058C   26323.25000000  .00000000  00000-0  18000-3 0  9990\n"
    "2 27607  64.5500 256.0000 0081000 311.0000  48.0000 14.76600000 12340\n"
    "1 25544U 98067A   26323.75000000  .00000000  00000-0  21000-3 0  9990\n"
    "2 25544  51.6400  64.0000 0006000  38.0000 322.0000 15.50000000 12340\n";

struct Outcome {
    int code = -1;
    std::vector<std::string> lines;
    std::string errors;
};

class VeloranRehearse : public testing::Test {
  protected:
    Outcome run(const QStringList& arguments, const QByteArray& input = {}) {
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto* display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(display);
        }
        process.setProcessEnvironment(environment);
        process.start(VELORAN_REHEARSE, arguments);
        process.write(input);
        process.closeWriteChannel();
        Outcome result;
        if (!process.waitForFinished(120'000)) return result;
        if (process.exitStatus() == QProcess::NormalExit) result.code = process.exitCode();
        result.errors = process.readAllStandardError().toStdString();
        for (const auto& line : process.readAllStandardOutput().split('\n')) {
            if (!line.isEmpty()) result.lines.push_back(line.toStdString());
        }
        return result;
    }
    QString file(const QString& name, const QByteArray& content) {
        const auto path = directory.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path;
    }
    static QStringList days(const QString& elements, const QString& count) {
        return {"--elements",           elements, "--site", "-33.87,151.21,20", "--start",
                "2026-11-20T09:00:00Z", "--days", count};
    }

    QTemporaryDir directory;
};

Unattended truth(std::int64_t seconds) {
    Unattended unattended;
    unattended.seconds = seconds;
    unattended.clock = [](std::int64_t second) { return kStart + static_cast<double>(second); };
    auto sky = trueSky(kLines, kSite, kStart, kStart - 86400,
                       kStart + static_cast<double>(seconds) + 90000);
    auto unnamed = sky.passes.extract("Unknown");
    unnamed.key() = "NORAD 25544";
    sky.passes.insert(std::move(unnamed));
    unattended.skies.push_back(std::move(sky));
    return unattended;
}

TEST_F(VeloranRehearse, TellsThePassesOfThreeSatellitesInElementLines) {
    const auto result = run(days(file("sets.txt", kLines), "2"));
    EXPECT_EQ(result.code, 0) << result.errors;
    std::vector<RehearsedEvent> events;
    for (const auto& line : result.lines) events.push_back(readEvent(line));
    EXPECT_TRUE(std::ranges::is_sorted(events, {}, &RehearsedEvent::at));
    const auto unattended = truth(2 * 86400);
    expectMarkedAtOnce(events, unattended);
    const auto totals = expectAsPlain(events, unattended);
    EXPECT_GT(totals.due, 15u);
    EXPECT_EQ(totals.started, totals.due);
    EXPECT_GT(totals.conflicts, 0u);
    EXPECT_GT(totals.skipped, 0u);
    for (const auto* name : {"RS-44 (DOSAAF-85)", "SO-50 \"QUOTED\"\\", "NORAD 25544"}) {
        EXPECT_TRUE(std::ranges::any_of(events, [name](const auto& event) {
            return event.satellite == name;
        })) << name;
    }
    EXPECT_TRUE(result.errors.starts_with("3 satellites: ")) << result.errors;
}

TEST_F(VeloranRehearse, ReloadsOfTheSameElementsChangeNothing) {
    const auto lines = file("sets.txt", kLines);
    const auto once = run(days(lines, "1"));
    // With reloads, and from then on searches, between two looks of the queue.
    const auto again = run(days(lines, "1") + QStringList{"--refresh-every", "0.70007"});
    EXPECT_EQ(once.code, 0);
    EXPECT_GT(once.lines.size(), 20u);
    // A reload starts the 300 s of the searches anew, so passes may be marked at another moment.
    const auto sessions = [](const Outcome& result) {
        std::vector<std::string> kept;
        for (const auto& line : result.lines) {
            const bool isSession = line.starts_with(R"({"event":"started")") ||
                                   line.starts_with(R"({"event":"ended")");
            if (isSession) kept.push_back(line);
        }
        return kept;
    };
    EXPECT_EQ(sessions(once), sessions(again));
    const auto sky = truth(86400);
    for (const auto& line : again.lines) {
        const auto event = readEvent(line);
        const auto* pass = sky.skies.front().find(event.satellite, event.pass());
        ASSERT_TRUE(pass) << line;
        EXPECT_NEAR(event.set - pass->set, 0, 0.01) << "cut: " << line;
    }
}

TEST_F(VeloranRehearse, ReadsMessagesInJsonFromTheStandardInput) {
    const QByteArray message =
        R"([{"OBJECT_NAME":"MOLNIYA","OBJECT_ID":"2020-001A","EPOCH":"2026-11-19T12:00:00.000",)"
        R"("MEAN_MOTION":2.006,"ECCENTRICITY":0.73,"INCLINATION":62.8,"RA_OF_ASC_NODE":40.0,)"
        R"("ARG_OF_PERICENTER":108.0,"MEAN_ANOMALY":30.0,"NORAD_CAT_ID":90001,"BSTAR":0}])";
    const auto result = run(days("-", "1"), message);
    EXPECT_EQ(result.code, 0) << result.errors;
    ASSERT_FALSE(result.lines.empty());
    EXPECT_EQ(readEvent(result.lines.front()).satellite, "MOLNIYA");
}

TEST_F(VeloranRehearse, MinimumElevationSkipsPasses) {
    const auto result =
        run(days(file("sets.txt", kLines), "1") + QStringList{"--min-elevation=90"});
    EXPECT_EQ(result.code, 0);
    for (const auto& line : result.lines) EXPECT_NE(readEvent(line).event, "started");
}

TEST_F(VeloranRehearse, HelpAndVersionGoToTheStandardOutput) {
    const auto help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    ASSERT_FALSE(help.lines.empty());
    EXPECT_TRUE(help.lines.front().starts_with("Usage: veloran-rehearse --elements FILE"));
    EXPECT_EQ(help.errors, "");
    const auto version = run({"--version"});
    EXPECT_EQ(version.code, 0);
    EXPECT_EQ(version.lines, std::vector<std::string>{"veloran-rehearse " VELORAN_VERSION});
}

TEST_F(VeloranRehearse, WrongCommandLineIsTwoAndPrintsNothing) {
    for (const auto& arguments :
         {QStringList{}, QStringList{"--days"}, QStringList{"sets.txt"}, days("sets.txt", "0"),
          days("sets.txt", "1") + QStringList{"--bogus", "1"}}) {
        const auto result = run(arguments);
        EXPECT_EQ(result.code, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(result.lines.empty());
        EXPECT_TRUE(result.errors.starts_with("veloran-rehearse: ")) << result.errors;
        EXPECT_TRUE(result.errors.ends_with("Try 'veloran-rehearse --help'.\n")) << result.errors;
    }
}

TEST_F(VeloranRehearse, ElementsThatCannotBeReadAreOne) {
    const auto missing = directory.filePath("none.txt");
    EXPECT_EQ(run(days(missing, "1")).errors,
              "veloran-rehearse: " + missing.toStdString() + ": No such file or directory\n");
    EXPECT_EQ(run(days(directory.path(), "1")).errors,
              "veloran-rehearse: " + directory.path().toStdString() + ": Is a directory\n");
    const auto empty = file("empty.txt", "no elements\n");
    EXPECT_EQ(run(days(empty, "1")).errors,
              "veloran-rehearse: " + empty.toStdString() + ": no element sets in it\n");
    const auto latin = file("latin.txt", "\xC9toile\n");
    EXPECT_EQ(run(days(latin, "1")).errors,
              "veloran-rehearse: " + latin.toStdString() + ": not UTF-8\n");
    for (const auto& path : {missing, directory.path(), empty, latin}) {
        EXPECT_EQ(run(days(path, "1")).code, 1) << path.toStdString();
    }
}

TEST_F(VeloranRehearse, OutputThatCannotBeWrittenIsOne) {
    QProcess process;
    process.setStandardOutputFile("/dev/full");
    process.start(VELORAN_REHEARSE, days(file("sets.txt", kLines), "0.5"));
    ASSERT_TRUE(process.waitForFinished(60'000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_EQ(process.readAllStandardError(), "veloran-rehearse: the output cannot be written\n");
}

}  // namespace
}  // namespace veloran::test
