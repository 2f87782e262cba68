#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace veloran {

enum class PutAside { nothingThere, moved, failed };

/// Whole files. May be used from any thread; may block, so big files belong on a worker.
class FileStore {
  public:
    /// A larger file counts as unreadable: no file of this program comes near it.
    static constexpr std::size_t kLargestFile = 64 * 1024 * 1024;

    virtual ~FileStore() = default;

    virtual std::filesystem::path homeDirectory() const = 0;
    /// Absent when the file does not exist, cannot be read or is too large.
    virtual std::optional<std::string> read(const std::filesystem::path& path) const = 0;
    /// Replaces the file as a whole or leaves it as it was; makes missing parent directories.
    /// Readers see the old or the new content, never a part. False on failure.
    virtual bool writeAtomically(const std::filesystem::path& path, std::string_view content) = 0;
    /// Removes a file. False when there was none or it could not be removed.
    virtual bool remove(const std::filesystem::path& path) = 0;
    /// Whether anything stands there, be it readable or not.
    virtual bool exists(const std::filesystem::path& path) const = 0;
    /// Renames what stands at `path`, be it a file or not, to "<name>.unreadable", in place of an
    /// earlier one.
    virtual PutAside putAside(const std::filesystem::path& path) = 0;
    /// Removes a directory with all its content, as far as that goes.
    virtual void removeDirectory(const std::filesystem::path& path) = 0;
};

}  // namespace veloran
