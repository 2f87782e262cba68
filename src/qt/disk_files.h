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
    bool writeAtomically(const std::filesystem::path& path, std::string_view content) override;
    bool remove(const std::filesystem::path& path) override;
    void removeDirectory(const std::filesystem::path& path) override;

  private:
    std::filesystem::path home_;
};

}  // namespace veloran
