#include "demo/local_station.h"

#include "sample_catalogue/sample_catalogue.h"

namespace veloran {

LocalStation::LocalStation(const QString& logFile) : log_(logFile) {
    radio_.onLine = [this](const RadioLogLine& line) {
        if (log_.isOpen()) log_.write(QByteArray::fromStdString(logText(line) + "\n"));
    };
}

std::string LocalStation::start(Instant day) {
    QFile file(VELORAN_SAMPLE_SATELLITES);
    if (!file.open(QIODevice::ReadOnly)) return "data/sample_satellites.csv cannot be read";
    const auto satellites = readSampleCatalogue(file.readAll().toStdString());
    if (!satellites) return "data/sample_satellites.csv does not read";
    for (const char* group : {"amateur", "stations", "weather"}) {
        elements_.serve(std::string("/NORAD/elements/gp.php?GROUP=") + group + "&FORMAT=json",
                        {.headers = {{"Content-Type", "application/json"}},
                         .body = ommArray(*satellites, group, day)});
    }
    if (!log_.fileName().isEmpty() && !log_.open(QIODevice::WriteOnly)) {
        return log_.fileName().toStdString() + " cannot be written";
    }
    if (!elements_.start() || !radio_.start()) return "no free port on 127.0.0.1";
    return "";
}

}  // namespace veloran
