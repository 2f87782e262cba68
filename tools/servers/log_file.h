#pragma once

#include <QFile>
#include <QString>
#include <cstdint>
#include <string_view>

namespace veloran {

/// Whether a log goes on in a new file before `line` more bytes, its file having `written` of them:
/// with the one put aside before, both together hold `mostBytes` at most. A line goes somewhere,
/// however long it is.
bool startsNewLogFile(std::uint64_t written, std::uint64_t line, std::uint64_t mostBytes);

/// A log that can be written for weeks: "FILE", and the lines before those in "FILE.1".
class LogFile {
  public:
    static constexpr std::uint64_t kMostBytes = 32'000'000;

    explicit LogFile(const QString& name, std::uint64_t mostBytes = kMostBytes)
        : file_(name), mostBytes_(mostBytes) {}

    /// Begins with an empty file, without one put aside; false when it cannot be written. Without
    /// an open file, lines go nowhere.
    [[nodiscard]] bool open();
    bool isOpen() const { return file_.isOpen(); }
    /// `line` is without its line end.
    void write(std::string_view line);

    QString name() const { return file_.fileName(); }

  private:
    QString nameOfEarlier() const { return name() + ".1"; }
    void putAside();

    QFile file_;
    std::uint64_t written_ = 0;
    std::uint64_t mostBytes_;
};

}  // namespace veloran
