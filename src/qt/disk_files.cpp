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

constexpr QFileDevice::Permissions kUserAlone{QFileDevice::ReadOwner, QFileDevice::WriteOwner};

bool write(const std::filesystem::path& path, std::string_view content, bool isPrivate) {
    std::error_code ignored;  // the write itself tells whether the directory is there
    std::filesystem::create_directories(path.parent_path(), ignored);
    QSaveFile file(nameOf(path));
    if (!file.open(QIODevice::WriteOnly)) return false;
    // Before the first byte, so that nobody else has read it by then. A file system that knows no
    // users takes the file all the same.
    if (isPrivate) file.setPermissions(kUserAlone);
    file.write(content.data(), static_cast<qint64>(content.size()));
    return file.commit();
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
    // One byte more than there is tells a file that grows meanwhile; a write replaces, so ours
    // never do, and such a one counts as unreadable like one that is too large.
    const qint64 size = file.size();
    if (size > static_cast<qint64>(kLargestFile)) return std::nullopt;
    const QByteArray content = file.read(size + 1);
    if (file.error() != QFileDevice::NoError) return std::nullopt;
    if (content.size() > size) return std::nullopt;
    return content.toStdString();
}

bool DiskFiles::writeAtomically(const std::filesystem::path& path, std::string_view content) {
    return write(path, content, false);
}

bool DiskFiles::writePrivately(const std::filesystem::path& path, std::string_view content) {
    return write(path, content, true);
}

bool DiskFiles::remove(const std::filesystem::path& path) {
    return QFile::remove(nameOf(path));
}

bool DiskFiles::exists(const std::filesystem::path& path) const {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

PutAside DiskFiles::putAside(const std::filesystem::path& path) {
    if (!exists(path)) return PutAside::nothingThere;
    std::error_code error;
    auto aside = path;
    aside += ".unreadable";
    std::filesystem::rename(path, aside, error);
    return error ? PutAside::failed : PutAside::moved;
}

void DiskFiles::narrow(const std::filesystem::path& path) {
    QFile::setPermissions(nameOf(path), kUserAlone);
}

void DiskFiles::removeDirectory(const std::filesystem::path& path) {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

}  // namespace veloran
