#include "core/search_order.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <utility>

namespace veloran {

namespace {

enum class Rank { tracked, shown, queued, fresh, listed };

Rank rankOf(const SearchBody& body) {
    if (body.isTracked) return Rank::tracked;
    if (body.isShown) return Rank::shown;
    if (body.isQueued) return Rank::queued;
    return body.isNew ? Rank::fresh : Rank::listed;
}

}  // namespace

std::vector<std::size_t> searchOrder(const std::vector<SearchBody>& bodies) {
    static constexpr Instant kNever{std::numeric_limits<double>::infinity()};
    std::vector<std::size_t> order(bodies.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&bodies](std::size_t i) {
        return std::pair(rankOf(bodies[i]), bodies[i].firstRise.value_or(kNever));
    });
    return order;
}

}  // namespace veloran
