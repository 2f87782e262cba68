#include "qt/disk_settings.h"

#include <QFile>
#include <QLockFile>
#include <atomic>
#include <system_error>
#include <utility>

#include "qt/disk_files.h"

namespace veloran {

/// One write: what changed, and all settings for the case that the file has gone.
struct DiskSettings::Batch {
    SettingChanges changes;
    SettingValues all;
    std::atomic<bool> written{false};
};

namespace {

std::optional<boost::json::object> readFile(const std::filesystem::path& file) {
    const auto text = DiskFiles(file.parent_path()).read(file);
    return text ? parseSettings(*text) : std::nullopt;
}

SettingChanges asChanges(const SettingValues& values) {
    return SettingChanges(values.begin(), values.end());
}

bool writeFile(const std::filesystem::path& file, const SettingChanges& changes,
               const SettingValues& all) {
    // Keeps two programs from reading and replacing at once. Where it cannot be had the settings
    // are written all the same.
    constexpr int kPatienceMilliseconds = 1000;
    std::error_code ignored;
    std::filesystem::create_directories(file.parent_path(), ignored);
    QLockFile turn(QFile::decodeName(QByteArray::fromStdString(file.string() + ".lock")));
    turn.tryLock(kPatienceMilliseconds);
    DiskFiles files(file.parent_path());
    auto stored = readFile(file);
    if (!stored) {
        if (files.putAside(file) == PutAside::failed) return false;
        stored.emplace();
        applyChanges(asChanges(all), *stored);
    }
    applyChanges(changes, *stored);
    return files.writePrivately(file, settingsText(*stored));
}

}  // namespace

DiskSettings::DiskSettings(std::filesystem::path file, MainLoop& loop)
    : file_(std::move(file)), loop_(loop) {
    DiskFiles(file_.parent_path()).narrow(file_);
    if (const auto stored = readFile(file_)) values_ = readableSettings(*stored);
}

DiskSettings::~DiskSettings() {
    alive_.reset();
    writer_.reset();  // waits for a write that runs
    if (inFlight_ && !inFlight_->written) unwritten_.merge(inFlight_->changes);
    if (!unwritten_.empty()) writeFile(file_, unwritten_, values_);
}

std::optional<SettingValue> DiskSettings::value(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void DiskSettings::set(std::string_view key, SettingValue value) {
    values_.insert_or_assign(std::string(key), value);
    change(key, std::move(value));
}

void DiskSettings::remove(std::string_view key) {
    if (const auto found = values_.find(key); found != values_.end()) values_.erase(found);
    change(key, std::nullopt);
}

std::vector<std::string> DiskSettings::keys() const {
    std::vector<std::string> keys;
    for (const auto& [key, value] : values_) keys.push_back(key);
    return keys;
}

void DiskSettings::change(std::string_view key, std::optional<SettingValue> value) {
    unwritten_.insert_or_assign(std::string(key), std::move(value));
    if (isScheduled_ || inFlight_) return;
    isScheduled_ = true;
    loop_.post([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) startWrite();
    });
}

void DiskSettings::startWrite() {
    isScheduled_ = false;
    inFlight_ = std::make_shared<Batch>();
    inFlight_->changes = std::exchange(unwritten_, {});
    inFlight_->all = values_;
    auto reportBack = [this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) finishWrite();
    };
    writer_->run([file = file_, batch = inFlight_, &loop = loop_, reportBack] {
        batch->written = writeFile(file, batch->changes, batch->all);
        loop.post(reportBack);
    });
}

void DiskSettings::finishWrite() {
    const auto batch = std::exchange(inFlight_, nullptr);
    // What was changed again since then is newer and stays; so a merge, not an assignment.
    if (!batch->written) {
        unwritten_.merge(batch->changes);
    } else if (!unwritten_.empty()) {
        startWrite();
    }
}

}  // namespace veloran
