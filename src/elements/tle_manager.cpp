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

namespace veloran {

namespace {

using ElementList = std::vector<TLEData>;
using OptionalList = std::optional<ElementList>;

/// One group as the workers see it: values only, so that no thread needs the manager.
struct CachedGroup {
    std::string key;
    std::filesystem::path cacheFile;
    std::filesystem::path timestampFile;
};

/// What the disk holds of a group. The list of a fresh one may be absent all the same.
struct CacheLook {
    bool isFresh = false;
    OptionalList list;
};

/// What one fetchCategories has collected so far. Main thread only.
struct Gathering {
    std::vector<ElementList> fresh;  ///< by position of the key
    std::vector<ElementList> downloaded;
    std::size_t pending = 0;
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

/// Runs `work` on a worker and hands its result to `then` on the main thread.
template <class Work, class Then>
void onWorker(const Machine& machine, Work work, Then then) {
    machine.workers.run([machine, work = std::move(work), then = std::move(then)]() mutable {
        auto result = std::make_shared<decltype(work())>(work());
        // Moved, so that what `then` holds is let go on the main thread too.
        machine.loop.post([result, then = std::move(then)]() mutable { then(std::move(*result)); });
    });
}

ElementList mergeAll(Gathering gathering, const UserElements& userElements) {
    auto lists = std::move(gathering.fresh);
    std::move(gathering.downloaded.begin(), gathering.downloaded.end(), std::back_inserter(lists));
    if (userElements.importedSets) lists.push_back(userElements.importedSets());
    return mergeElements(lists);
}

/// Whether a text can be an address at all; the HTTP client judges the rest.
bool readsAsUrl(std::string_view url) {
    return !url.empty() && std::none_of(url.begin(), url.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20;
    });
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

std::optional<TLECategory> TLEManager::categoryForKey(std::string_view key) const {
    for (auto& category : categories()) {
        if (category.name == key) return std::move(category);
    }
    return std::nullopt;
}

bool TLEManager::isCacheStale(std::string_view key, double maxAgeHours) const {
    return cache_age::isStale(machine_.files.read(timestampFile(key)),
                              machine_.clock.now().unixSeconds(), maxAgeHours);
}

std::optional<std::vector<TLEData>> TLEManager::loadCached(std::string_view key) const {
    return readGroup(machine_.files, {std::string(key), cacheFile(key), timestampFile(key)});
}

void TLEManager::fetchCategory(const std::string& key, OptionalListCompletion completion) const {
    const auto category = categoryForKey(key);
    if (!category || !readsAsUrl(category->url)) {
        machine_.loop.post([completion = std::move(completion)] { completion(std::nullopt); });
        return;
    }
    machine_.http.get(category->url, [machine = machine_, completion = std::move(completion),
                                      group = CachedGroup{key, cacheFile(key), timestampFile(key)}](
                                         std::optional<std::string> body) {
        onWorker(
            machine,
            [machine, group, body = std::move(body)] { return receiveGroup(machine, group, body); },
            completion);
    });
}

void TLEManager::fetchCategories(const std::vector<std::string>& keys,
                                 ListCompletion completion) const {
    const auto gathering = std::make_shared<Gathering>();
    gathering->fresh.resize(keys.size());
    gathering->pending = keys.size() + 1;  // one for this loop, so that no key may end it early
    const auto leave = [machine = machine_, userElements = userElements_, gathering,
                        completion = std::move(completion)] {
        if (--gathering->pending > 0) return;
        onWorker(
            machine,
            [userElements, gathering] { return mergeAll(std::move(*gathering), userElements); },
            completion);
    };
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const CachedGroup group{keys[i], cacheFile(keys[i]), timestampFile(keys[i])};
        const auto download = [manager = *this, key = keys[i], gathering, leave] {
            manager.fetchCategory(key, [gathering, leave](OptionalList list) {
                if (list) gathering->downloaded.push_back(std::move(*list));
                leave();
            });
        };
        onWorker(
            machine_, [machine = machine_, group] { return lookInCache(machine, group); },
            [gathering, leave, download, i](CacheLook look) {
                if (!look.isFresh) return download();
                if (look.list) gathering->fresh[i] = std::move(*look.list);
                leave();
            });
    }
    leave();
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
