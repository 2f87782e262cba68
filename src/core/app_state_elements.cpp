// The user's own elements: imported sets and sources.

#include <memory>
#include <utility>

#include "core/app_state.h"

namespace veloran {

/// A report of this, which is no longer made once this has gone.
std::function<void()> AppState::whileAlive(std::function<void()> then) {
    return [weak = weak_from_this(), then = std::move(then)] {
        const auto self = weak.lock();
        if (self && then) then();
    };
}

void AppState::importElements(std::string text,
                              std::function<void(CustomTLEStore::ImportResult)> then) {
    const auto result = std::make_shared<CustomTLEStore::ImportResult>();
    importWork_.run([store = imported_, text = std::move(text),
                     result]() mutable { *result = store.importFromText(text); },
                    whileAlive([then = std::move(then), result] {
                        if (then) then(*result);
                    }));
}

void AppState::removeImported(std::int64_t noradId, std::function<void()> then) {
    importWork_.run([store = imported_, noradId]() mutable { store.remove(noradId); },
                    whileAlive(std::move(then)));
}

void AppState::clearImported(std::function<void()> then) {
    importWork_.run([store = imported_]() mutable { store.clear(); }, whileAlive(std::move(then)));
}

}  // namespace veloran
