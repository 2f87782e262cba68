// Files of 50 MB without one set of elements in them, handed to the import sheet.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <fstream>
#include <random>
#include <string>

#include "scenarios/real_station.h"
#include "ui/import/tle_import_sheet.h"
#include "ui/widgets/value_label.h"

namespace veloran {
namespace {

using test::spinUntil;

constexpr std::size_t kFileSize = 50'000'000;
constexpr double kLongestGapSeconds = 0.4;

std::string repeated(const std::string& piece) {
    std::string text;
    text.reserve(kFileSize + piece.size());
    while (text.size() < kFileSize) text += piece;
    return text;
}

std::string letters() {
    std::mt19937 random(1);
    std::string text(kFileSize, ' ');
    for (char& c : text) c = static_cast<char>(' ' + random() % 95);
    for (std::size_t i = 60; i < text.size(); i += 61) text[i] = '\n';
    return text;
}

struct Garbage {
    const char* name;
    std::string (*text)();
    const char* error;

    friend std::ostream& operator<<(std::ostream& out, const Garbage& g) { return out << g.name; }
};

const Garbage kGarbage[] = {
    {"Letters", letters, "Error: No valid TLEs found in text"},
    {"Newlines", [] { return repeated("\n"); }, "Error: No valid TLEs found in text"},
    {"OpenBrackets", [] { return repeated("["); }, "Error: JSON could not be parsed"},
    {"EmptyRecords", [] { return "[" + repeated("{},") + "{}]"; },
     "Error: JSON could not be parsed"},
    {"FirstLinesOnly",
     [] {
         return repeated("1 25544U 98067A   26095.54791667  .00016717  00000+0  10270-3 0  9994\n");
     },
     "Error: No valid TLEs found in text"},
};

/// A figure of the process in megabytes: "VmRSS:", or "VmHWM:", its highest so far.
double megabytes(const std::string& figure) {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == figure && status >> kilobytes) return kilobytes / 1000;
    }
    return 0;
}

class LargeImport : public testing::TestWithParam<Garbage> {};

INSTANTIATE_TEST_SUITE_P(Files, LargeImport, testing::ValuesIn(kGarbage),
                         [](const auto& garbage) { return garbage.param.name; });

TEST_P(LargeImport, GarbageNeitherFreezesTheWindowNorFillsTheMemory) {
    const QTemporaryDir directory;
    const QString path = directory.filePath("garbage.txt");
    {
        const std::string text = GetParam().text();
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(text.data(), static_cast<qint64>(text.size())),
                  static_cast<qint64>(text.size()));
    }
    const test::TemporaryMachine machine;
    const auto state =
        AppState::create(machine.machine(), {.presetHosts = {}, .transmitterFile = {}});
    QWidget window;
    window.show();
    auto* sheet = new TLEImportSheet(state, &window);
    sheet->present();
    const auto* message = sheet->findChild<ValueLabel*>("resultMessage");

    const double before = megabytes("VmRSS:");
    const double begun = test::steadySeconds();
    const test::LoopWatch watch;
    sheet->importFiles({path});
    ASSERT_TRUE(spinUntil([&] { return !message->text().isEmpty(); }));
    fmt::print("{:.0f} ms, longest gap {:.0f} ms, at most {:.0f} MB more\n",
               1000 * (test::steadySeconds() - begun), 1000 * watch.longestGapSeconds(),
               megabytes("VmHWM:") - before);
    EXPECT_EQ(message->text().toStdString(), GetParam().error);
    EXPECT_LT(watch.longestGapSeconds(), kLongestGapSeconds);
    EXPECT_FALSE(state->isLoadingTLEs);
}

}  // namespace
}  // namespace veloran
