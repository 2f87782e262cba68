#include "transmitters/satnogs.h"

#include <fmt/format.h>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <utility>

#include "base/json.h"
#include "transmitters/json_fields.h"

namespace veloran {

namespace {

std::optional<SatNOGSTransmitter> decodeRecord(const boost::json::value& value) {
    if (!value.is_object()) return std::nullopt;
    JsonFields fields(value.get_object());
    fields.text("uuid");
    fields.text("type");
    const auto alive = fields.flag("alive");
    SatNOGSTransmitter record;
    record.description = fields.requiredText("description");
    record.alive = alive.value_or(false);
    record.downlink_low = fields.hertz("downlink_low");
    record.downlink_high = fields.hertz("downlink_high");
    record.uplink_low = fields.hertz("uplink_low");
    record.uplink_high = fields.hertz("uplink_high");
    record.mode = fields.text("mode");
    record.invert = fields.flag("invert");
    record.norad_cat_id = fields.integer("norad_cat_id");
    if (!alive || !fields.isGood()) return std::nullopt;
    return record;
}

Transmitter channel(const SatNOGSTransmitter& entry, double low, std::optional<double> high,
                    const char* suffix, const char* direction) {
    Transmitter made;
    if (high && *high != low) {
        made.freqLow = low;
        made.freqHigh = high;
    } else {
        made.freq = low;
    }
    made.mode = entry.mode.value_or("FM");
    made.description = entry.description + suffix;
    made.direction = direction;
    made.inverting = entry.invert.value_or(false);
    return made;
}

}  // namespace

std::optional<std::vector<SatNOGSTransmitter>> decodeServiceAnswer(std::string_view answer) {
    const auto value = parseJson(answer);
    if (!value || !value->is_array()) return std::nullopt;
    std::vector<SatNOGSTransmitter> records;
    for (const auto& element : value->get_array()) {
        auto record = decodeRecord(element);
        if (!record) return std::nullopt;
        records.push_back(std::move(*record));
    }
    return records;
}

std::vector<Transmitter> convertTransmitterEntry(const SatNOGSTransmitter& entry) {
    const bool twoWay = entry.downlink_low && entry.uplink_low;
    std::vector<Transmitter> channels;
    if (entry.downlink_low) {
        channels.push_back(channel(entry, *entry.downlink_low, entry.downlink_high,
                                   twoWay ? " (DL)" : "", "down"));
    }
    if (entry.uplink_low) {
        channels.push_back(
            channel(entry, *entry.uplink_low, entry.uplink_high, twoWay ? " (UL)" : "", "up"));
    }
    return channels;
}

namespace {

std::vector<SatNOGSTransmitter> liveRecords(std::string_view answer) {
    auto records = decodeServiceAnswer(answer).value_or(std::vector<SatNOGSTransmitter>{});
    std::erase_if(records, [](const auto& record) { return !record.alive; });
    return records;
}

void appendChannels(const SatNOGSTransmitter& record, std::vector<Transmitter>& channels) {
    for (auto& made : convertTransmitterEntry(record)) channels.push_back(std::move(made));
}

}  // namespace

std::vector<Transmitter> channelsOfAnswer(std::string_view answer) {
    std::vector<Transmitter> channels;
    for (const auto& record : liveRecords(answer)) appendChannels(record, channels);
    // As many as a channel file may hold: what is kept has to be readable again.
    if (channels.size() > kMaxTransmitters) channels.clear();
    return channels;
}

TransmitterMap channelsByNumber(std::string_view answer) {
    TransmitterMap byNumber;
    for (const auto& record : liveRecords(answer)) {
        if (record.norad_cat_id) appendChannels(record, byNumber[*record.norad_cat_id]);
    }
    std::erase_if(byNumber,
                  [](const auto& entry) { return entry.second.size() > kMaxTransmitters; });
    return byNumber;
}

SatNOGSFetch::SatNOGSFetch(const Machine& machine, std::string serviceBase)
    : machine_(machine), serviceBase_(std::move(serviceBase)) {}

std::string SatNOGSFetch::baseURL() const {
    return serviceBase_ + "/api/transmitters/";
}

namespace {

/// GET, decode on a worker, hand over on the main thread.
template <class Result, class Decode>
void fetchDecoded(const Machine& machine, const std::string& url, Decode decode,
                  std::function<void(Result)> completion) {
    auto& workers = machine.workers;
    auto& loop = machine.loop;
    machine.http.get(
        url, [&workers, &loop, decode, completion = std::move(completion)](HttpResult answer) {
            workers.run([&loop, decode, completion, answer = std::move(answer)] {
                loop.post([completion, result = decode(answer)]() mutable {
                    completion(std::move(result));
                });
            });
        });
}

ServiceAnswer decodeAnswer(const HttpResult& answer) {
    constexpr int kFirstError = 400;
    return {channelsOfAnswer(answer.body.value_or("")),
            !answer.body || answer.status.value_or(0) >= kFirstError};
}

}  // namespace

void SatNOGSFetch::ask(std::int64_t noradId, std::function<void(ServiceAnswer)> completion) const {
    const auto url = fmt::format("{}?format=json&satellite__norad_cat_id={}", baseURL(), noradId);
    fetchDecoded<ServiceAnswer>(machine_, url, decodeAnswer, std::move(completion));
}

void SatNOGSFetch::fetchTransmitters(std::int64_t noradId, Completion completion) const {
    ask(noradId, [completion = std::move(completion)](ServiceAnswer answer) {
        completion(std::move(answer.channels));
    });
}

void SatNOGSFetch::fetchAllActive(std::function<void(TransmitterMap)> completion) const {
    fetchDecoded<TransmitterMap>(
        machine_, baseURL() + "?format=json&alive=true",
        [](const HttpResult& answer) { return channelsByNumber(answer.body.value_or("")); },
        std::move(completion));
}

}  // namespace veloran
