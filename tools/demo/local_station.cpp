#include "demo/local_station.h"

#include <QFile>
#include <algorithm>
#include <optional>

#include "base/text.h"
#include "demo/sample_services.h"
#include "elements/tle_manager.h"
#include "synthetic_catalogue.h"
#include "transmitters/transmitter.h"

namespace veloran {
namespace {

constexpr const char* kChannelPath = "/api/transmitters/";

std::optional<std::string> contentOf(const char* name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return file.readAll().toStdString();
}

/// A satellite that no group has: a copy of one, a third of a turn ahead.
std::string madeUpElements(SampleSatellite satellite, std::string name, std::int64_t noradId,
                           Instant day) {
    satellite.name = std::move(name);
    satellite.noradId = noradId;
    satellite.meanAnomaly =
        satellite.meanAnomaly < 240 ? satellite.meanAnomaly + 120 : satellite.meanAnomaly - 240;
    satellite.groups = {"own"};
    return threeLineText(TLEManager::parseAuto(ommArray({satellite}, "own", day)));
}

}  // namespace

void RadioUpdates::count(std::string_view command) {
    if (command.starts_with("\\sat_dl")) ++downlink;
    if (command.starts_with("\\sat_ul")) ++uplink;
    if (command.starts_with("F ")) ++plain;
}

LocalStation::LocalStation(const QString& logFile) : log_(logFile) {
    radio_.onLine = [this](const RadioLogLine& line) {
        if (line.kind == RadioLogLine::Kind::received) updates_.count(line.text);
        if (log_.isOpen()) log_.write(logText(line));
    };
}

std::string LocalStation::start(Instant day, std::size_t madeUp) {
    const auto satellites =
        readSampleCatalogue(contentOf(VELORAN_SAMPLE_SATELLITES).value_or("unreadable"));
    if (!satellites) return "data/sample_satellites.csv does not read";
    serveElements(*satellites, day);
    web_.serve("/NORAD/elements/gp.php?GROUP=active&FORMAT=json",
               {.headers = {{"Content-Type", "application/json"}},
                .body = bench::groupText(bench::syntheticCatalogue(madeUp), day)});
    if (!serveChannels()) return "data/sample_transmitters.json does not read";
    if (!log_.name().isEmpty() && !log_.open()) {
        return log_.name().toStdString() + " cannot be written";
    }
    if (!web_.start() || !radio_.start()) return "no free port on 127.0.0.1";
    return "";
}

std::size_t LocalStation::channelRequests() const {
    return static_cast<std::size_t>(
        std::ranges::count(web_.requests(), std::string_view(kChannelPath), &HttpRequest::path));
}

void LocalStation::serveElements(const std::vector<SampleSatellite>& satellites, Instant day) {
    for (const char* group : {"amateur", "stations", "weather"}) {
        web_.serve(std::string("/NORAD/elements/gp.php?GROUP=") + group + "&FORMAT=json",
                   {.headers = {{"Content-Type", "application/json"}},
                    .body = ommArray(satellites, group, day)});
    }
    if (satellites.empty()) return;
    web_.serve("/own/elements.txt",
               {.headers = {{"Content-Type", "text/plain"}},
                .body = madeUpElements(satellites.front(), "OWN SOURCE 1", 99001, day)});
    importText_ = madeUpElements(satellites.back(), "IMPORTED 1", 99002, day);
}

/// What the sample file has of the satellite that is asked for; an empty list for the others.
bool LocalStation::serveChannels() {
    const auto database =
        decodeTransmitterDatabase(contentOf(VELORAN_SAMPLE_TRANSMITTERS).value_or(""));
    if (!database) return false;
    web_.route(kChannelPath, [database = *database](const HttpRequest& request) {
        const auto noradId =
            parseInt64(std::string_view(request.query).substr(request.query.find_last_of('=') + 1));
        const auto known = noradId ? database.find(*noradId) : database.end();
        return HttpAnswer{.headers = {{"Content-Type", "application/json"}},
                          .body = known == database.end() ? "[]" : serviceRecords(known->second)};
    });
    return true;
}

}  // namespace veloran
