// The user's own elements: imported sets and sources.

#include <memory>
#include <utility>

#include "core/app_state.h"

namespace veloran {

std::vector<UserTLESource> AppState::presetSources() const {
    return veloran::presetSources(config_.presetHosts);
}

void AppState::importElements(std::string text,
                              std::function<void(CustomTLEStore::ImportResult)> then) {
    const auto result = std::make_shared<CustomTLEStore::ImportResult>();
    importWork_.run([store = imported_, text = std::move(text),
                     result]() mutable { *result = store.importFromText(text); },
                    [then = std::move(then), result] { then(*result); });
}

void AppState::removeImported(std::int64_t noradId, std::function<void()> then) {
    importWork_.run([store = imported_, noradId]() mutable { store.remove(noradId); },
                    std::move(then));
}

void AppState::clearImported(std::function<void()> then) {
    importWork_.run([store = imported_]() mutable { store.clear(); }, std::move(then));
}

}  // namespace veloran
