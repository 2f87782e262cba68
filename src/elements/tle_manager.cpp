#include "elements/tle_manager.h"

#include <fmt/format.h>

#include <algorithm>
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
    OptionalList list;
};

/// What one fetchCategories has collected so far, and what comes behind. Main thread only.
struct Gathering {
    std::vector<ElementList> fresh;  ///< by position of the key
    std::vector<ElementList> downloaded;
    std::size_t pending = 0;
    std::function<std::vector<TLEData>()> importedSets;
    TLEManager::ListCompletion completion;
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

CacheLook lookInCache(const Machine& machine, const CachedGroup& group) {
    const auto stamp = machine.files.read(group.timestampFile);
    const double now = machine.clock.now().unixSeconds();
    if (cache_age::isStale(stamp, now, TLEManager::kMaxAgeHours)) return {};
    return {true, readGroup(machine.files, group)};
}

/// The answer is kept before anybody looks at it: an error page replaces the cached group and
/// counts as fresh, so that the service is not asked again for a day.
OptionalList receiveGroup(const Machine& machine, const CachedGroup& group,
                          const std::optional<std::string>& body) {
    if (body && isValidUtf8(*body)) {
        machine.files.writeAtomically(group.cacheFile, *body);
        machine.files.writeAtomically(group.timestampFile,
                                      shortestText(machine.clock.now().unixSeconds()));
        if (auto list = decodeGroup(*body, group.key)) return list;
    }
    return readGroup(machine.files, group);
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
                   TLEManager::OptionalListCompletion completion) {
    if (!isWebAddress(group.url)) {
        machine.loop.post([completion = std::move(completion)] { completion(std::nullopt); });
        return;
    }
    machine.http.get(group.url, [machine, group, completion = std::move(completion)](
                                    std::optional<std::string> body) {
        onWorker(
            machine,
            [machine, group, body = std::move(body)] { return receiveGroup(machine, group, body); },
            completion);
    });
}

/// One of the parts that `gathering` waits for is through; behind the last one comes the merge.
void leave(const Machine& machine, Gathering& gathering) {
    if (--gathering.pending > 0) return;
    auto lists = std::move(gathering.fresh);
    std::move(gathering.downloaded.begin(), gathering.downloaded.end(), std::back_inserter(lists));
    onWorker(
        machine,
        [lists = std::move(lists), importedSets = std::move(gathering.importedSets)]() mutable {
            if (importedSets) lists.push_back(importedSets());
            return mergeElements(lists);
        },
        std::move(gathering.completion));
}

/// Takes in the lists of one group: from its fresh cache, or downloaded.
void gatherGroup(const Machine& machine, const CachedGroup& group, std::size_t position,
                 std::shared_ptr<Gathering> gathering) {
    onWorker(
        machine, [machine, group] { return lookInCache(machine, group); },
        [machine, group, position, gathering = std::move(gathering)](CacheLook look) {
            if (look.isFresh) {
                if (look.list) gathering->fresh[position] = std::move(*look.list);
                leave(machine, *gathering);
                return;
            }
            downloadGroup(machine, group, [machine, gathering](OptionalList list) {
                if (list) gathering->downloaded.push_back(std::move(*list));
                leave(machine, *gathering);
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
                  std::move(completion));
}

void TLEManager::fetchCategories(const std::vector<std::string>& keys,
                                 ListCompletion completion) const {
    auto gathering = std::make_shared<Gathering>();
    gathering->fresh.resize(keys.size());
    gathering->pending = keys.size() + 1;  // one for this loop, so that no key may end it early
    gathering->importedSets = userElements_.importedSets;
    gathering->completion = std::move(completion);
    const auto known = categories();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto& key = keys[i];
        gatherGroup(machine_, {key, urlOf(known, key), cacheFile(key), timestampFile(key)}, i,
                    gathering);
    }
    leave(machine_, *gathering);
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
        [machine = machine_, decodeFirst,
         completion = std::move(completion)](std::optional<std::string> body) {
            onWorker(
                machine, [decodeFirst, body = std::move(body)] { return decodeFirst(body); },
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
