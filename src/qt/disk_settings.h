#pragma once

#include <filesystem>
#include <memory>

#include "platform/main_loop.h"
#include "platform/settings_store.h"
#include "qt/settings_file.h"
#include "qt/thread_workers.h"

namespace veloran {

/// The settings in memory, and behind them one JSON file, which only the user may read: addresses
/// of sources may hold passwords. The file is read once, at the start;
/// changes are written by a thread of its own, those of one turn of the loop together, and the end
/// of the store writes what is left.
///
/// A write takes the file as it is then and replaces only the keys changed here, so that two
/// running programs keep each other's settings. A file that cannot be read as a whole is kept as
/// "<name>.unreadable" when it is replaced. A failed write is tried again with the next one.
class DiskSettings final : public SettingsStore {
  public:
    /// `loop` has to outlive the store.
    DiskSettings(std::filesystem::path file, MainLoop& loop);
    ~DiskSettings() override;

    std::optional<SettingValue> value(std::string_view key) const override;
    void set(std::string_view key, SettingValue value) override;
    void remove(std::string_view key) override;
    std::vector<std::string> keys() const override;

  private:
    struct Batch;

    void change(std::string_view key, std::optional<SettingValue> value);
    void startWrite();
    void finishWrite();

    std::filesystem::path file_;
    MainLoop& loop_;
    SettingValues values_;
    SettingChanges unwritten_;
    bool isScheduled_ = false;
    std::shared_ptr<Batch> inFlight_;  // what the writer has, until it has reported back
    std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
    std::unique_ptr<ThreadWorkers> writer_ = std::make_unique<ThreadWorkers>(1);
};

}  // namespace veloran
