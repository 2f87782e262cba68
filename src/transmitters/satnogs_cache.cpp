#include "transmitters/satnogs_cache.h"

#include <string>
#include <utility>

#include "base/text.h"

namespace veloran {

namespace {

struct Paths {
    std::filesystem::path channels;
    std::filesystem::path stamp;
};

bool isStale(const FileStore& files, const std::filesystem::path& stamp, Instant now,
             double maxAgeHours) {
    const auto content = files.read(stamp);
    if (!content || !isValidUtf8(*content)) return true;
    const auto saved = parseDouble(trimmed(*content, Blanks::withNewlines));
    return !saved || now.unixSeconds() - *saved > maxAgeHours * 3600.0;
}

std::optional<std::vector<Transmitter>> readChannels(const FileStore& files,
                                                     const std::filesystem::path& path) {
    const auto content = files.read(path);
    return content ? decodeTransmitters(*content) : std::nullopt;
}

void writeChannels(FileStore& files, const Paths& paths, Instant now,
                   const std::vector<Transmitter>& transmitters) {
    files.writeAtomically(paths.channels, encodeTransmitters(transmitters));
    files.writeAtomically(paths.stamp, shortestText(now.unixSeconds()));
}

}  // namespace

SatNOGSCache::SatNOGSCache(const Machine& machine, SatNOGSFetch fetch)
    : machine_(machine), fetch_(std::move(fetch)) {}

std::filesystem::path SatNOGSCache::directory() const {
    return machine_.files.homeDirectory() / ".veloran" / "satnogs";
}

std::filesystem::path SatNOGSCache::cacheFile(std::int64_t noradId) const {
    return directory() / (std::to_string(noradId) + ".json");
}

std::filesystem::path SatNOGSCache::timestampFile(std::int64_t noradId) const {
    return directory() / (std::to_string(noradId) + ".timestamp");
}

bool SatNOGSCache::isCacheStale(std::int64_t noradId, double maxAgeHours) const {
    return isStale(machine_.files, timestampFile(noradId), machine_.clock.now(), maxAgeHours);
}

std::optional<std::vector<Transmitter>> SatNOGSCache::loadCached(std::int64_t noradId) const {
    return readChannels(machine_.files, cacheFile(noradId));
}

void SatNOGSCache::save(std::int64_t noradId, const std::vector<Transmitter>& transmitters) {
    if (*cleared_) return;
    writeChannels(machine_.files, {cacheFile(noradId), timestampFile(noradId)},
                  machine_.clock.now(), transmitters);
}

void SatNOGSCache::fetchWithCache(std::int64_t noradId, Completion completion) const {
    fetch(noradId, [completion = std::move(completion)](ServiceAnswer answer) {
        completion(std::move(answer.channels));
    });
}

void SatNOGSCache::fetch(std::int64_t noradId,
                         std::function<void(ServiceAnswer)> completion) const {
    const Paths paths{cacheFile(noradId), timestampFile(noradId)};
    const auto machine = machine_;

    // The service's answer, or what an old cache still holds; an empty answer is never saved.
    auto settle = [machine, paths, completion, cleared = cleared_](ServiceAnswer fetched) {
        machine.workers.run(
            [machine, paths, completion, cleared, answer = std::move(fetched)]() mutable {
                auto& list = answer.channels;
                if (list.empty()) {
                    list = readChannels(machine.files, paths.channels).value_or(std::move(list));
                } else if (!*cleared) {
                    writeChannels(machine.files, paths, machine.clock.now(), list);
                }
                machine.loop.post([completion, answer = std::move(answer)]() mutable {
                    completion(std::move(answer));
                });
            });
    };

    machine.workers.run([machine, paths, noradId, completion, settle, service = fetch_] {
        const bool fresh =
            !isStale(machine.files, paths.stamp, machine.clock.now(), defaultMaxAgeHours);
        const auto cached = fresh ? readChannels(machine.files, paths.channels) : std::nullopt;
        machine.loop.post([cached, noradId, completion, settle, service] {
            if (cached) {
                completion({*cached, false});
            } else {
                service.ask(noradId, settle);
            }
        });
    });
}

void SatNOGSCache::fetchCached(std::int64_t noradId, Completion completion) const {
    machine_.workers.run(
        [machine = machine_, path = cacheFile(noradId), completion = std::move(completion)] {
            auto list = readChannels(machine.files, path).value_or(std::vector<Transmitter>{});
            machine.loop.post(
                [completion, list = std::move(list)]() mutable { completion(std::move(list)); });
        });
}

void SatNOGSCache::clearAll() {
    *cleared_ = true;
    machine_.files.removeDirectory(directory());
}

}  // namespace veloran
