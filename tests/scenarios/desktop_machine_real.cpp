#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <atomic>
#include <filesystem>
#include <memory>

#include "app/desktop_machine.h"

namespace veloran {
namespace {

// Closing the window while a large load runs.
TEST(DesktopMachine, EndsWhileItsWorkersAreBusyWithFiles) {
    QTemporaryDir directory;
    const std::filesystem::path home = directory.path().toStdString();
    std::atomic<int> finished = 0;
    auto desktop = std::make_unique<DesktopMachine>(home, home / "settings.json");
    ASSERT_TRUE(desktop->files.writeAtomically(home / "group.tle", std::string(100'000, 'x')));
    desktop->settings.set("obsName", std::string("Home"));
    for (int i = 0; i < 2000; ++i) {
        desktop->workers.run([&machine = desktop->machine, home, &finished] {
            const auto text = machine.files.read(home / "group.tle");
            machine.loop.post([text] {});
            if (text && text->size() == 100'000) ++finished;
        });
    }
    desktop.reset();
    EXPECT_LE(finished, 2000);
    EXPECT_TRUE(std::filesystem::exists(home / "settings.json"));
}

}  // namespace
}  // namespace veloran
