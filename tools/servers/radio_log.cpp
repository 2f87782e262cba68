#include "servers/radio_log.h"

#include <fmt/format.h>

#include <QDateTime>
#include <utility>

namespace veloran {

std::string logText(const RadioLogLine& line) {
    const auto ms = static_cast<qint64>(line.at.unixSeconds() * 1000.0 + 0.5);
    const auto time = QDateTime::fromMSecsSinceEpoch(ms).toUTC().toString(Qt::ISODateWithMs);
    const char sign = line.kind == RadioLogLine::Kind::received ? '<'
                      : line.kind == RadioLogLine::Kind::sent   ? '>'
                                                                : '.';
    return fmt::format("{} #{} {} {}", time.toStdString(), line.client, sign, line.text);
}

const RadioLogLine& RadioLog::add(RadioLogLine line) {
    bytes_ += bytesOf(line);
    lines_.push_back(std::move(line));
    while (bytes_ > mostBytes_ && lines_.size() > 1) {
        bytes_ -= bytesOf(lines_.front());
        lines_.pop_front();
    }
    return lines_.back();
}

}  // namespace veloran
