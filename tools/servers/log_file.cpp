#include "servers/log_file.h"

namespace veloran {

bool startsNewLogFile(std::uint64_t written, std::uint64_t line, std::uint64_t mostBytes) {
    return written > 0 && written + line > mostBytes / 2;
}

bool LogFile::open() {
    QFile::remove(nameOfEarlier());
    written_ = 0;
    return file_.open(QIODevice::WriteOnly);
}

void LogFile::write(std::string_view line) {
    if (!isOpen()) return;
    if (startsNewLogFile(written_, line.size() + 1, mostBytes_)) putAside();
    file_.write(line.data(), static_cast<qint64>(line.size()));
    file_.write("\n", 1);
    file_.flush();
    written_ += line.size() + 1;
}

void LogFile::putAside() {
    const QString own = name();
    file_.close();
    QFile::remove(nameOfEarlier());
    QFile::rename(own, nameOfEarlier());
    if (!file_.open(QIODevice::WriteOnly)) return;
    written_ = 0;
}

}  // namespace veloran
