#pragma once

#include "platform/file_store.h"

namespace veloran {

/// The files of the disk, under a home directory that is handed in: demos and tests bring one to
/// throw away. Only regular files are read, so that a pipe or a device cannot hold up the caller.
class DiskFiles final : public FileStore {
  public:
    explicit DiskFiles(std::filesystem::path home);

    std::filesystem::path homeDirectory() const override;
    std::optional<std::string> read(const std::filesystem::path& path) const override;
    /// Writes beside, flushes to the disk, renames. A link stays a link: its target is replaced.
    /// Killed in the moment of renaming (in a write, where the file system has no unnamed files),
    /// it may leave one "<name>.<six letters>" behind. These are not cleaned up: they are very
    /// rare, and a user's own "custom.tle.backup" looks the same.
    bool writeAtomically(const std::filesystem::path& path, std::string_view content) override;
    /// The same, and only the user may read and write the file, whatever it was before.
    bool writePrivately(const std::filesystem::path& path, std::string_view content);
    /// Takes a file that there is from all but the user.
    void narrow(const std::filesystem::path& path);
    bool remove(const std::filesystem::path& path) override;
    bool exists(const std::filesystem::path& path) const override;
    PutAside putAside(const std::filesystem::path& path) override;
    void removeDirectory(const std::filesystem::path& path) override;

  private:
    std::filesystem::path home_;
};

}  // namespace veloran
