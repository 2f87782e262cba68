// Writes the files of the program over and over, for a test that kills it: each has one of two
// contents at any moment.

#include <QCoreApplication>
#include <cstdio>
#include <string>

#include "qt/disk_files.h"
#include "qt/disk_settings.h"
#include "qt/qt_main_loop.h"
#include "qt/thread_workers.h"
#include "scenarios/written_files.h"

namespace {

using namespace veloran;
using namespace veloran::test;

/// One task for each file, which begins anew when it has ended.
void writeForEver(WorkerPool& workers, MainLoop& loop, DiskFiles& files, const WrittenFile& file,
                  bool second) {
    workers.run([&, second] {
        files.writeAtomically(files.homeDirectory() / file.name, second ? file.second : file.first);
        loop.post([&, second] { writeForEver(workers, loop, files, file, !second); });
    });
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    const QCoreApplication application(argc, argv);
    const std::filesystem::path home = argv[1];
    QtMainLoop loop;
    DiskFiles files(home);
    DiskSettings settings(home / kSettingsName, loop);
    ThreadWorkers workers(4);

    const auto written = writtenFiles();
    for (const auto& file : written) writeForEver(workers, loop, files, file, false);
    std::int64_t turn = 0;
    const auto timer = loop.every(0.001, [&] {
        ++turn;
        // Told at once, so they have to reach the disk together.
        settings.set("one", turn);
        settings.set("two", turn);
        settings.set("padding", std::string(20'000, 'p'));
    });
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
