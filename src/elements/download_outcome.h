#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/instant.h"
#include "platform/http_client.h"

namespace veloran {

/// What the last download of a group gave.
struct DownloadOutcome {
    enum class Kind { records, notModified, httpStatus, noAnswer, noElements, noAddress };

    Kind kind = Kind::noAnswer;
    std::int64_t number = 0;  ///< of records; the status of `httpStatus`
    Instant when;

    /// Whether it brought elements, or said that those in the cache are the newest.
    bool hasElements() const { return kind == Kind::records || kind == Kind::notModified; }
    bool operator==(const DownloadOutcome&) const = default;
};

/// What an answer with so many readable sets in it comes to.
DownloadOutcome downloadOutcome(const HttpResult& answer, std::size_t sets, Instant when);
/// "98 records", "1 record", "not modified", "HTTP 404", "no answer", "no elements in it", "no web
/// address".
std::string outcomeWords(const DownloadOutcome& outcome);

}  // namespace veloran
