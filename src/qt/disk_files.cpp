#include "qt/disk_files.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QString>
#include <system_error>
#include <utility>

namespace veloran {

namespace {

QString nameOf(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

}  // namespace

DiskFiles::DiskFiles(std::filesystem::path home) : home_(std::move(home)) {}

std::filesystem::path DiskFiles::homeDirectory() const {
    return home_;
}

std::optional<std::string> DiskFiles::read(const std::filesystem::path& path) const {
    const auto name = nameOf(path);
    if (!QFileInfo(name).isFile()) return std::nullopt;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    // One byte more than allowed tells a file that is too large, also one that grows meanwhile.
    const QByteArray content = file.read(static_cast<qint64>(kLargestFile) + 1);
    if (file.error() != QFileDevice::NoError) return std::nullopt;
    if (static_cast<std::size_t>(content.size()) > kLargestFile) return std::nullopt;
    return content.toStdString();
}

bool DiskFiles::writeAtomically(const std::filesystem::path& path, std::string_view content) {
    std::error_code ignored;  // the write itself tells whether the directory is there
    std::filesystem::create_directories(path.parent_path(), ignored);
    QSaveFile file(nameOf(path));
    if (!file.open(QIODevice::WriteOnly)) return false;
    file.write(content.data(), static_cast<qint64>(content.size()));
    return file.commit();
}

bool DiskFiles::remove(const std::filesystem::path& path) {
    return QFile::remove(nameOf(path));
}

}  // namespace veloran
