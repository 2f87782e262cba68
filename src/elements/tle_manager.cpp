#include "elements/tle_manager.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include "base/text.h"
#include "elements/builtin_groups.h"
#include "elements/element_merge.h"
#include "elements/omm_parser.h"
#include "elements/tle_parser.h"
#include "platform/http_client.h"

namespace veloran {

namespace {

using ElementList = std::vector<TLEData>;
using OptionalList = std::optional<ElementList>;

/// One group as the workers see it: values only, so that no thread needs the manager.
struct CachedGroup {
    std::string key;
    std::string url;  ///< empty where no category has the key
    std::filesystem::path cacheFile;
    std::filesystem::path timestampFile;
};

/// What the disk holds of a group. The list of a fresh one may be absent all the same.
struct CacheLook {
    bool isFresh = false;
    OptionalList list;  ///< of an old cache only where that is wanted
    std::optional<Instant> downloaded;
};

/// What a download has brought, or what the cache holds in its place.
struct Received {
    OptionalList list;
    DownloadOutcome outcome;
};

/// What one fetchCategories has collected so far, and what comes behind. Main thread only.
struct Gathering {
    std::vector<ElementList> fresh;  ///< by position of the key
    std::vector<ElementList> downloaded;
    std::vector<ElementList> cached;  ///< by position, for the watch; fresh or not
    std::size_t unread = 0;           ///< caches that have not been looked into
    bool isAnyStale = false;
    std::size_t pending = 0;
    bool isThrough = false;
    std::function<std::vector<TLEData>()> importedSets;
    TLEManager::ListCompletion completion;
    FetchWatch watch;
};

OptionalList decodeGroup(std::string_view text, const std::string& key) {
    ElementList list = TLEManager::parseAuto(text);
    if (list.empty()) return std::nullopt;
    for (auto& set : list) set.source = key;
    return list;
}

OptionalList readGroup(const FileStore& files, const CachedGroup& group) {
    const auto text = files.read(group.cacheFile);
    if (!text || !isValidUtf8(*text)) return std::nullopt;
    return decodeGroup(*text, group.key);
}

CacheLook lookInCache(const Machine& machine, const CachedGroup& group, bool wantsStale) {
    const auto stamp = machine.files.read(group.timestampFile);
    const double now = machine.clock.now().unixSeconds();
    CacheLook look;
    look.isFresh = !cache_age::isStale(stamp, now, TLEManager::kMaxAgeHours);
    if (look.isFresh || wantsStale) look.list = readGroup(machine.files, group);
    // A time that nobody can have meant says nothing.
    constexpr double kLongestAge = 1e10;
    const auto downloaded = cache_age::readTimestamp(stamp);
    if (downloaded && std::abs(now - *downloaded) < kLongestAge) {
        look.downloaded = Instant::fromUnixSeconds(*downloaded);
    }
    return look;
}

/// As far as the cache tells; absent where it has no time or was not read.
std::optional<DownloadOutcome> rememberedOutcome(const CacheLook& look) {
    if (!look.downloaded || (!look.isFresh && !look.list)) return std::nullopt;
    return downloadOutcome({std::string(), std::nullopt}, look.list ? look.list->size() : 0,
                           *look.downloaded);
}

/// The answer is kept before anybody looks at it: an error page replaces the cached group and
/// counts as fresh, so that the service is not asked again for a day.
Received receiveGroup(const Machine& machine, const CachedGroup& group, const HttpResult& answer) {
    const Instant now = machine.clock.now();
    if (answer.body && isValidUtf8(*answer.body)) {
        machine.files.writeAtomically(group.cacheFile, *answer.body);
        machine.files.writeAtomically(group.timestampFile, shortestText(now.unixSeconds()));
        if (auto list = decodeGroup(*answer.body, group.key)) {
            const auto outcome = downloadOutcome(answer, list->size(), now);
            return {std::move(list), outcome};
        }
    }
    return {readGroup(machine.files, group), downloadOutcome(answer, 0, now)};
}

/// Runs `work` on a worker and hands its result to `then` on the main thread. What `then` holds is
/// let go there too, as long as moving it leaves nothing behind: no captured constants.
template <class Work, class Then>
void onWorker(const Machine& machine, Work work, Then then) {
    machine.workers.run([machine, work = std::move(work), then = std::move(then)]() mutable {
        auto result = std::make_shared<decltype(work())>(work());
        machine.loop.post([result = std::move(result), then = std::move(then)]() mutable {
            then(std::move(*result));
        });
    });
}

void downloadGroup(const Machine& machine, const CachedGroup& group,
                   std::function<void(Received)> completion) {
    if (!isWebAddress(group.url)) {
        machine.loop.post([completion = std::move(completion), now = machine.clock.now()] {
            completion({std::nullopt, {DownloadOutcome::Kind::noAddress, 0, now}});
        });
        return;
    }
    machine.http.get(group.url,
                     [machine, group, completion = std::move(completion)](HttpResult answer) {
                         onWorker(
                             machine,
                             [machine, group, answer = std::move(answer)] {
                                 return receiveGroup(machine, group, answer);
                             },
                             completion);
                     });
}

/// Merges the lists and what the user has imported on a worker.
template <class Then>
void mergeLists(const Machine& machine, std::vector<ElementList> lists,
                std::function<std::vector<TLEData>()> importedSets, Then then) {
    onWorker(
        machine,
        [lists = std::move(lists), importedSets = std::move(importedSets)]() mutable {
            if (importedSets) lists.push_back(importedSets());
            return mergeElements(lists);
        },
        std::move(then));
}

/// One of the parts that `gathering` waits for is through; behind the last one comes the merge.
void leave(const Machine& machine, const std::shared_ptr<Gathering>& gathering) {
    if (--gathering->pending > 0) return;
    auto lists = std::move(gathering->fresh);
    std::move(gathering->downloaded.begin(), gathering->downloaded.end(),
              std::back_inserter(lists));
    mergeLists(machine, std::move(lists), gathering->importedSets,
               [gathering](std::vector<TLEData> list) {
                   gathering->isThrough = true;
                   gathering->completion(std::move(list));
               });
}

/// Another cache has been looked into; behind the last one the watch hears what they hold.
void tellCached(const Machine& machine, const std::shared_ptr<Gathering>& gathering) {
    if (--gathering->unread > 0 || !gathering->isAnyStale || !gathering->watch.cached) return;
    mergeLists(machine, std::move(gathering->cached), gathering->importedSets,
               [gathering](std::vector<TLEData> list) {
                   if (!gathering->isThrough) gathering->watch.cached(std::move(list));
               });
}

/// Takes in the lists of one group: from its fresh cache, or downloaded.
void gatherGroup(const Machine& machine, const CachedGroup& group, std::size_t position,
                 std::shared_ptr<Gathering> gathering) {
    const bool wantsStale = bool(gathering->watch.cached);
    onWorker(
        machine, [machine, group, wantsStale] { return lookInCache(machine, group, wantsStale); },
        [machine, group, position, gathering = std::move(gathering)](CacheLook look) {
            const auto& watch = gathering->watch;
            if (watch.looked) watch.looked(group.key, !look.isFresh, rememberedOutcome(look));
            gathering->isAnyStale = gathering->isAnyStale || !look.isFresh;
            if (look.list && watch.cached) gathering->cached[position] = *look.list;
            tellCached(machine, gathering);
            if (look.isFresh) {
                if (look.list) gathering->fresh[position] = std::move(*look.list);
                leave(machine, gathering);
                return;
            }
            downloadGroup(machine, group, [machine, key = group.key, gathering](Received received) {
                if (gathering->watch.downloaded) gathering->watch.downloaded(key, received.outcome);
                if (received.list) gathering->downloaded.push_back(std::move(*received.list));
                leave(machine, gathering);
            });
        });
}

/// Empty where no category has the key.
std::string urlOf(const std::vector<TLECategory>& categories, std::string_view key) {
    const auto found = std::find_if(categories.begin(), categories.end(),
                                    [key](const auto& category) { return category.name == key; });
    return found == categories.end() ? std::string() : found->url;
}

}  // namespace

TLEManager::TLEManager(const Machine& machine, std::string serviceBase, UserElements userElements)
    : machine_(machine),
      serviceBase_(std::move(serviceBase)),
      userElements_(std::move(userElements)) {}

std::vector<TLECategory> TLEManager::builtinCategories() const {
    std::vector<TLECategory> result;
    for (const auto& group : builtinGroups()) {
        result.push_back(
            {group.key, celestrakURL(group.groupWord), group.description, group.section});
    }
    return result;
}

std::vector<TLECategory> TLEManager::categories() const {
    auto result = builtinCategories();
    if (userElements_.categories) {
        for (auto& category : userElements_.categories()) result.push_back(std::move(category));
    }
    return result;
}

std::vector<TLEData> TLEManager::parseAuto(std::string_view text) {
    if (OMMParser::looksLikeJSON(text)) {
        auto sets = OMMParser::parse(text);
        if (!sets.empty()) return sets;
    }
    return TLEParser::parse(text);
}

std::string TLEManager::celestrakURL(std::string_view groupWord) const {
    return fmt::format("{}/NORAD/elements/gp.php?GROUP={}&FORMAT=json", serviceBase_, groupWord);
}

std::string TLEManager::filenameForCategory(std::string_view key) {
    return replacedAll(replacedAll(std::string(key), ':', '-'), '/', '_');
}

std::filesystem::path TLEManager::cacheDirectory() const {
    return machine_.files.homeDirectory() / ".veloran" / "tle";
}

std::filesystem::path TLEManager::cacheFile(std::string_view key) const {
    return cacheDirectory() / (filenameForCategory(key) + ".tle");
}

std::filesystem::path TLEManager::timestampFile(std::string_view key) const {
    return cacheDirectory() / (filenameForCategory(key) + ".timestamp");
}

bool TLEManager::isCacheStale(std::string_view key, double maxAgeHours) const {
    return cache_age::isStale(machine_.files.read(timestampFile(key)),
                              machine_.clock.now().unixSeconds(), maxAgeHours);
}

std::optional<std::vector<TLEData>> TLEManager::loadCached(std::string_view key) const {
    return readGroup(machine_.files, {std::string(key), {}, cacheFile(key), timestampFile(key)});
}

void TLEManager::fetchCategory(const std::string& key, OptionalListCompletion completion) const {
    downloadGroup(machine_, {key, urlOf(categories(), key), cacheFile(key), timestampFile(key)},
                  [completion = std::move(completion)](Received received) {
                      completion(std::move(received.list));
                  });
}

void TLEManager::fetchCategories(const std::vector<std::string>& keys, ListCompletion completion,
                                 FetchWatch watch) const {
    auto gathering = std::make_shared<Gathering>();
    gathering->fresh.resize(keys.size());
    gathering->cached.resize(keys.size());
    gathering->unread = keys.size();
    gathering->pending = keys.size() + 1;  // one for this loop, so that no key may end it early
    gathering->importedSets = userElements_.importedSets;
    gathering->completion = std::move(completion);
    gathering->watch = std::move(watch);
    const auto known = categories();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto& key = keys[i];
        gatherGroup(machine_, {key, urlOf(known, key), cacheFile(key), timestampFile(key)}, i,
                    gathering);
    }
    leave(machine_, gathering);
}

void TLEManager::fetchByNoradId(std::int64_t noradId,
                                std::function<void(std::optional<TLEData>)> completion) const {
    const auto decodeFirst = [](const std::optional<std::string>& body) -> std::optional<TLEData> {
        if (!body || !isValidUtf8(*body)) return std::nullopt;
        auto sets = parseAuto(*body);
        if (sets.empty()) return std::nullopt;
        return std::move(sets.front());
    };
    machine_.http.get(
        fmt::format("{}/NORAD/elements/gp.php?CATNR={}&FORMAT=json", serviceBase_, noradId),
        [machine = machine_, decodeFirst, completion = std::move(completion)](HttpResult answer) {
            onWorker(
                machine, [decodeFirst, body = std::move(answer.body)] { return decodeFirst(body); },
                completion);
        });
}

double TLEManager::oldestCacheAge(const std::vector<std::string>& keys) const {
    std::vector<std::optional<std::string>> timestamps;
    for (const auto& key : keys) timestamps.push_back(machine_.files.read(timestampFile(key)));
    return cache_age::oldest(timestamps, machine_.clock.now().unixSeconds());
}

void TLEManager::forgetTimestamp(std::string_view key) const {
    machine_.files.remove(timestampFile(key));
}

}  // namespace veloran
