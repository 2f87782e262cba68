#include "elements/custom_tle_store.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <initializer_list>
#include <unordered_map>

#include "base/json.h"
#include "base/text.h"
#include "elements/element_merge.h"
#include "elements/tle_parser.h"

namespace veloran {

namespace {

namespace json = boost::json;

/// The first of the keys that holds a text.
std::optional<std::string_view> textUnder(const json::object& object,
                                          std::initializer_list<std::string_view> keys) {
    for (const auto key : keys) {
        const auto* value = object.if_contains(key);
        if (value && value->is_string()) return std::string_view(value->get_string());
    }
    return std::nullopt;
}

/// A text of JSON as one line of the stored file: a name "A\n1 ..." must not become two.
std::string onOneLine(std::string_view text) {
    std::string line(takeLine(text));
    while (!text.empty()) line.append(" ").append(takeLine(text));
    return line;
}

std::optional<TLEData> setFromObject(const json::object& object) {
    const auto name = textUnder(object, {"OBJECT_NAME", "tle0", "name"});
    const auto line1 = textUnder(object, {"TLE_LINE1", "tle1"});
    const auto line2 = textUnder(object, {"TLE_LINE2", "tle2"});
    if (!line1 || !line2 || line1->empty() || line2->empty()) return std::nullopt;
    return TLEParser::parseTwoLines(onOneLine(name.value_or("Unknown")), onOneLine(*line1),
                                    onOneLine(*line2));
}

/// The sets of CelesTrak's JSON with lines and of the SatNOGS form; absent for what is neither one
/// object nor an array of objects.
std::optional<std::vector<TLEData>> parseJSON(std::string_view text) {
    const auto value = parseJson(text);
    if (!value) return std::nullopt;
    std::vector<TLEData> sets;
    const auto keep = [&sets](const json::value& element) {
        if (auto set = setFromObject(element.get_object())) sets.push_back(std::move(*set));
    };
    if (value->is_object()) {
        keep(*value);
        return sets;
    }
    if (!value->is_array()) return std::nullopt;
    const auto& elements = value->get_array();
    if (!std::all_of(elements.begin(), elements.end(),
                     [](const auto& element) { return element.is_object(); })) {
        return std::nullopt;
    }
    for (const auto& element : elements) keep(element);
    return sets;
}

}  // namespace

ImportMessage importMessage(std::int64_t count, const std::optional<std::string>& error,
                            bool hasPutAside) {
    if (error) return {"Error: " + *error, true};
    return {fmt::format("Imported {} satellite{}{}", count, count == 1 ? "" : "s",
                        hasPutAside ? "; the earlier custom.tle could not be read and is kept as "
                                      "custom.tle.unreadable"
                                    : ""),
            false};
}

DecodedImport decodeImport(std::string_view text) {
    DecodedImport result;
    const auto content = trimmed(text, Blanks::withNewlines);
    if (content.starts_with('{') || content.starts_with('[')) {
        auto sets = parseJSON(content);
        if (!sets) return {{}, "JSON could not be parsed"};
        if (sets->empty()) return {{}, "JSON parsed but no TLEs found"};
        result.sets = std::move(*sets);
    } else {
        // Names that are no UTF-8 would make the whole stored file unreadable.
        if (isValidUtf8(content)) result.sets = TLEParser::parse(content);
        if (result.sets.empty()) return {{}, "No valid TLEs found in text"};
    }
    for (auto& set : result.sets) set.source = kCustomSource;
    return result;
}

std::int64_t mergeImported(std::vector<TLEData>& stored, const std::vector<TLEData>& sets) {
    std::unordered_map<std::int64_t, std::size_t> places;
    for (std::size_t i = 0; i < stored.size(); ++i) places.try_emplace(stored[i].noradId, i);
    std::int64_t added = 0;
    for (const auto& set : sets) {
        const auto [place, isNew] = places.try_emplace(set.noradId, stored.size());
        if (isNew) {
            stored.push_back(set);
            ++added;
        } else {
            stored[place->second] = set;
        }
    }
    return added;
}

std::string customFileText(const std::vector<TLEData>& sets) {
    std::string text;
    for (const auto& set : sets) {
        text += set.name + '\n' + set.line1 + '\n' + set.line2 + '\n';
    }
    return text;
}

std::filesystem::path CustomTLEStore::fileURL() const {
    return files_.homeDirectory() / ".veloran" / "custom.tle";
}

std::vector<TLEData> CustomTLEStore::load() const {
    return read().value_or(std::vector<TLEData>{});
}

/// Absent for no file and for one that does not read: text of another encoding may be valid UTF-8
/// without a set in it.
std::optional<std::vector<TLEData>> CustomTLEStore::read() const {
    const auto content = files_.read(fileURL());
    if (!content || !isValidUtf8(*content)) return std::nullopt;
    auto sets = TLEParser::parse(*content);
    if (sets.empty() && !trimmed(*content, Blanks::withNewlines).empty()) return std::nullopt;
    for (auto& set : sets) set.source = kCustomSource;
    return sets;
}

void CustomTLEStore::save(const std::vector<TLEData>& sets) {
    const std::string text = customFileText(sets);
    if (text.size() <= FileStore::kLargestFile) files_.writeAtomically(fileURL(), text);
}

std::int64_t CustomTLEStore::add(const std::vector<TLEData>& sets) {
    return store(sets).count;
}

CustomTLEStore::ImportResult CustomTLEStore::store(const std::vector<TLEData>& sets) {
    auto stored = read();
    ImportResult result;
    if (!stored) {
        const auto aside = files_.putAside(fileURL());
        if (aside == PutAside::failed) {
            return {0, "custom.tle cannot be read, and not be put aside either", false};
        }
        result.hasPutAside = aside == PutAside::moved;
        stored.emplace();
    }
    result.count = mergeImported(*stored, sets);
    save(*stored);
    return result;
}

void CustomTLEStore::remove(std::int64_t noradId) {
    auto stored = read();
    if (!stored && files_.exists(fileURL())) return;
    if (!stored) stored.emplace();
    std::erase_if(*stored, [noradId](const auto& set) { return set.noradId == noradId; });
    save(*stored);
}

void CustomTLEStore::clear() {
    files_.remove(fileURL());
}

CustomTLEStore::ImportResult CustomTLEStore::importFromText(std::string_view text) {
    auto decoded = decodeImport(text);
    if (decoded.error) return {0, std::move(decoded.error), false};
    return store(decoded.sets);
}

}  // namespace veloran
