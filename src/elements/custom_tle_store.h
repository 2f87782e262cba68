#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "elements/tle_data.h"
#include "platform/file_store.h"

namespace veloran {

/// The element sets that the user imported by hand, in one text file of three lines a set.
class CustomTLEStore {
  public:
    explicit CustomTLEStore(FileStore& files) : files_(files) {}

    /// ".veloran/custom.tle" in the home directory.
    std::filesystem::path fileURL() const;
    /// Empty when there is no readable file: text in UTF-8, not too large, with a set in it. Every
    /// record has the source "custom".
    std::vector<TLEData> load() const;
    /// Replaces whatever the file was. A list too large to be read back is not written, like one
    /// that the disk refuses.
    void save(const std::vector<TLEData>& sets);
    /// Merges into the stored list by catalogue number; the count of numbers that were new. A file
    /// that cannot be read is kept as "custom.tle.unreadable"; where that fails, nothing is stored.
    std::int64_t add(const std::vector<TLEData>& sets);
    /// An unreadable file stays as it is.
    void remove(std::int64_t noradId);
    void clear();

    struct ImportResult {
        std::int64_t count = 0;
        std::optional<std::string> error;  ///< in words, for the user; nothing was saved then
        bool hasPutAside = false;          ///< a file that could not be read was kept beside
    };
    ImportResult importFromText(std::string_view text);

  private:
    std::optional<std::vector<TLEData>> read() const;
    ImportResult store(const std::vector<TLEData>& sets);

    FileStore& files_;
};

/// The result line of an import.
struct ImportMessage {
    std::string text;
    bool isError = false;
};
ImportMessage importMessage(std::int64_t count, const std::optional<std::string>& error,
                            bool hasPutAside = false);

/// What a pasted text or file holds, before anything is stored: sets, or an error in words. A line
/// end within a text of JSON counts as a blank, so that it adds no line to the stored file.
struct DecodedImport {
    std::vector<TLEData> sets;
    std::optional<std::string> error;
};
DecodedImport decodeImport(std::string_view text);

/// The stored list after `sets` were merged in, and how many numbers were new.
std::int64_t mergeImported(std::vector<TLEData>& stored, const std::vector<TLEData>& sets);

/// The file's content for a list.
std::string customFileText(const std::vector<TLEData>& sets);

}  // namespace veloran
