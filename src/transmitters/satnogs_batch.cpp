#include "transmitters/satnogs_batch.h"

#include <deque>
#include <set>
#include <utility>

namespace veloran {

struct SatNOGSBatch::State : std::enable_shared_from_this<State> {
    State(SatNOGSCache with, Completion then)
        : cache(std::move(with)), completion(std::move(then)) {}

    void begin() {
        while (!waiting.empty() && underWay.size() < kMostAtOnce) {
            const auto id = waiting.front();
            waiting.pop_front();
            underWay.insert(id);
            fetch(id);
        }
    }

    void fetch(std::int64_t id) {
        const auto taken = [weak = weak_from_this(), id](ServiceAnswer answer) {
            if (const auto self = weak.lock()) self->take(id, std::move(answer));
        };
        if (hasFailed) {
            cache.fetchCached(id, [taken](std::vector<Transmitter> list) {
                taken({std::move(list), true});
            });
        } else {
            cache.fetch(id, taken);
        }
    }

    void take(std::int64_t id, ServiceAnswer answer) {
        hasFailed = hasFailed || answer.hasFailed;
        underWay.erase(id);
        begin();
        if (underWay.empty()) hasFailed = false;  // the batch is through
        completion(id, std::move(answer.channels));
    }

    SatNOGSCache cache;
    Completion completion;
    std::deque<std::int64_t> waiting;
    std::set<std::int64_t> underWay;
    bool hasFailed = false;
};

SatNOGSBatch::SatNOGSBatch(SatNOGSCache cache, Completion completion)
    : state_(std::make_shared<State>(std::move(cache), std::move(completion))) {}

void SatNOGSBatch::add(const std::vector<std::int64_t>& noradIds) {
    std::set<std::int64_t> known = state_->underWay;
    known.insert(state_->waiting.begin(), state_->waiting.end());
    for (const auto id : noradIds) {
        if (known.insert(id).second) state_->waiting.push_back(id);
    }
    state_->begin();
}

}  // namespace veloran
