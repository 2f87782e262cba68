#include "elements/download_outcome.h"

#include <fmt/format.h>

namespace veloran {

DownloadOutcome downloadOutcome(const HttpResult& answer, std::size_t sets, Instant when) {
    using Kind = DownloadOutcome::Kind;
    if (sets > 0) return {Kind::records, static_cast<std::int64_t>(sets), when};
    if (answer.status == HttpClient::kNotModified) return {Kind::notModified, 0, when};
    if (!answer.body) return {Kind::noAnswer, 0, when};
    const int status = answer.status.value_or(200);
    if (status < 200 || status >= 300) return {Kind::httpStatus, status, when};
    return {Kind::noElements, 0, when};
}

std::string outcomeWords(const DownloadOutcome& outcome) {
    switch (outcome.kind) {
        case DownloadOutcome::Kind::records:
            return fmt::format("{} record{}", outcome.number, outcome.number == 1 ? "" : "s");
        case DownloadOutcome::Kind::notModified:
            return "not modified";
        case DownloadOutcome::Kind::httpStatus:
            return fmt::format("HTTP {}", outcome.number);
        case DownloadOutcome::Kind::noAnswer:
            return "no answer";
        case DownloadOutcome::Kind::noElements:
            return "no elements in it";
        case DownloadOutcome::Kind::noAddress:
            return "no web address";
    }
    return {};
}

}  // namespace veloran
