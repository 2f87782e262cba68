#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/app_state.h"

namespace veloran {

/// A file of elements as text, or why there is none: it could not be read, is no UTF-8, or is
/// larger than FileStore::kLargestFile. Reads from the disk.
struct ElementFile {
    std::string text;
    std::optional<std::string> error;  ///< with the file's name
};
ElementFile readElementFile(const QString& path);

/// Called once on the main thread.
using ImportReport = std::function<void(const ImportMessage&)>;

// An import reads, decodes and stores off the main thread, loads the data anew if it has brought
// something, then reports. It goes on when whoever began it has gone, and ends with the state.

void importText(const std::shared_ptr<AppState>& state, std::string text, ImportReport report);
/// One file after the other, with one report of all.
void importFiles(const std::shared_ptr<AppState>& state, const QStringList& paths,
                 ImportReport report);

}  // namespace veloran
