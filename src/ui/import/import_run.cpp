#include "ui/import/import_run.h"

#include <fmt/format.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QThreadPool>
#include <algorithm>
#include <utility>

#include "base/text.h"
#include "platform/file_store.h"

namespace veloran {

namespace {

constexpr std::size_t kMegabyte = 1024 * 1024;
constexpr std::size_t kLargest = FileStore::kLargestFile;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string tooLarge() {
    return fmt::format("larger than {} MB", kLargest / kMegabyte);
}

/// The content up to one byte more than is allowed; absent on an error.
std::optional<std::string> readSome(QFile& file) {
    std::string content;
    while (content.size() <= kLargest) {
        const std::size_t before = content.size();
        content.resize(before + std::min(kMegabyte, kLargest + 1 - before));
        const qint64 count =
            file.read(content.data() + before, static_cast<qint64>(content.size() - before));
        content.resize(before + static_cast<std::size_t>(std::max<qint64>(count, 0)));
        if (count < 0) return std::nullopt;
        if (count == 0) break;
    }
    return content;
}

/// Several files in a row.
struct Batch {
    std::weak_ptr<AppState> state;
    QStringList waiting;
    bool isSingle = true;
    ImportReport report;
    std::int64_t count = 0;
    bool hasImported = false;
    bool hasPutAside = false;
    QStringList failures = {};
};

void runNext(const std::shared_ptr<Batch>& batch);

void finish(const Batch& batch, AppState& state) {
    QStringList texts;
    if (batch.hasImported) {
        state.loadData();
        texts += QString::fromStdString(
            importMessage(batch.count, std::nullopt, batch.hasPutAside).text);
    }
    texts += batch.failures;
    batch.report({texts.join("; ").toStdString(), !batch.failures.isEmpty()});
}

void take(Batch& batch, const QString& path, const CustomTLEStore::ImportResult& result) {
    if (!result.error) {
        batch.count += result.count;
        batch.hasImported = true;
        batch.hasPutAside = batch.hasPutAside || result.hasPutAside;
        return;
    }
    const QString text = QString::fromStdString(importMessage(0, result.error).text);
    batch.failures +=
        batch.isSingle ? text : QString("%1 (%2)").arg(text, QFileInfo(path).fileName());
}

void importContent(const std::shared_ptr<Batch>& batch, const QString& path, ElementFile file) {
    const auto state = batch->state.lock();
    if (!state) return;
    if (file.error) {
        batch->failures += "Failed to read file: " + QString::fromStdString(*file.error);
        runNext(batch);
        return;
    }
    state->importElements(std::move(file.text),
                          [batch, path](const CustomTLEStore::ImportResult& result) {
                              take(*batch, path, result);
                              runNext(batch);
                          });
}

void runNext(const std::shared_ptr<Batch>& batch) {
    const auto state = batch->state.lock();
    if (!state) return;
    if (batch->waiting.isEmpty()) {
        finish(*batch, *state);
        return;
    }
    QThreadPool::globalInstance()->start([batch, path = batch->waiting.takeFirst()]() mutable {
        ElementFile file = readElementFile(path);
        // Moved on, so that the batch is let go on the main thread.
        QMetaObject::invokeMethod(
            qApp,
            [batch = std::move(batch), path, file = std::move(file)]() mutable {
                importContent(batch, path, std::move(file));
            },
            Qt::QueuedConnection);
    });
}

}  // namespace

ElementFile readElementFile(const QString& path) {
    const QFileInfo info(path);
    const auto failed = [name = info.fileName().toStdString()](std::string_view why) {
        return ElementFile{{}, fmt::format("{}: {}", name, why)};
    };
    // A pipe or a device would keep the reader waiting.
    if (info.exists() && !info.isFile()) return failed("not a regular file");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return failed(file.errorString().toStdString());
    auto content = readSome(file);
    if (!content) return failed(file.errorString().toStdString());
    if (content->size() > kLargest) return failed(tooLarge());
    if (!isValidUtf8(*content)) return failed("not UTF-8 text");
    if (content->starts_with(kByteOrderMark)) content->erase(0, kByteOrderMark.size());
    return {std::move(*content), std::nullopt};
}

void importText(const std::shared_ptr<AppState>& state, std::string text, ImportReport report) {
    if (text.size() > kLargest) {
        report(importMessage(0, "The text is " + tooLarge()));
        return;
    }
    state->importElements(std::move(text),
                          [weak = std::weak_ptr(state),
                           report = std::move(report)](const CustomTLEStore::ImportResult& result) {
                              const auto alive = weak.lock();
                              if (!result.error && alive) alive->loadData();
                              report(importMessage(result.count, result.error, result.hasPutAside));
                          });
}

void importFiles(const std::shared_ptr<AppState>& state, const QStringList& paths,
                 ImportReport report) {
    runNext(std::make_shared<Batch>(Batch{.state = state,
                                          .waiting = paths,
                                          .isSingle = paths.size() == 1,
                                          .report = std::move(report)}));
}

}  // namespace veloran
