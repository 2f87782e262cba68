#include "support/unattended.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/json/object.hpp>
#include <cmath>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "base/json.h"
#include "elements/tle_manager.h"
#include "elements/tle_parser.h"
#include "orbit/look_angles.h"

namespace veloran::test {
namespace {

constexpr double kLowestPeak = 2;       // degrees, of what the program lists
constexpr double kDegreesClose = 0.05;  // a peak so near a limit may fall on either side of it
constexpr double kSecondsClose = 0.01;
constexpr double kSearchPeriod = 300;
constexpr double kDaySeconds = 86400;
constexpr double kSecondsToOneDegree = 90;  // that the slowest of low satellites takes

std::string textOf(const std::string& satellite, const TruePass& pass) {
    return fmt::format("{} from {:.3f} to {:.3f}, {:.2f} degrees", satellite,
                       pass.rise.unixSeconds(), pass.set.unixSeconds(), pass.maxElevation);
}

/// Of two long lists tells where they part.
void expectSame(const std::vector<std::string>& found, const std::vector<std::string>& expected) {
    const auto [met, wanted] = std::ranges::mismatch(found, expected);
    const auto text = [](const auto& list, auto place) {
        return place == list.end() ? "nothing" : *place;
    };
    EXPECT_TRUE(met == found.end() && wanted == expected.end())
        << "expected: " << text(expected, wanted) << "\nfound:    " << text(found, met)
        << "\nafter " << wanted - expected.begin() << " of " << expected.size();
}

/// A pass that the user marked.
struct Mark {
    std::string satellite;
    TruePass pass;
};

bool isMarkedAt(const std::vector<RehearsedEvent>& events, Instant at, const Mark& mark) {
    return std::ranges::any_of(events, [&](const RehearsedEvent& event) {
        return (event.event == "queued" || event.event == "conflict") && event.at == at &&
               event.satellite == mark.satellite && event.pass().overlaps(mark.pass);
    });
}

/// A stay of the radio on one mark, by looks of the queue.
struct Session {
    std::size_t mark = 0;
    Instant started;
    std::optional<Instant> ended;
};

/// The queue, told as plainly as can be: who is up holds the radio until it has set.
class PlainQueue {
  public:
    PlainQueue(const Unattended& unattended, const std::vector<Mark>& marks)
        : unattended_(unattended), marks_(marks) {}

    std::vector<Session> play() {
        for (std::int64_t second = 0; second <= unattended_.seconds; ++second) {
            look(unattended_.clock(second));
        }
        return sessions_;
    }

  private:
    struct Span {
        Instant rise;
        Instant set;
        std::size_t mark = 0;
    };

    void look(Instant now) {
        const auto& sky = unattended_.skyAt(now);
        if (&sky != sky_) enter(sky, now);
        if (session_) {
            if (now < session_->set) return;
            sessions_.back().ended = now;
            session_.reset();
        }
        // Marks hardly overlap, so the one that rose last is the one that is up.
        const auto next = std::upper_bound(spans_.begin(), spans_.end(), now,
                                           [](Instant t, const Span& s) { return t < s.rise; });
        if (next == spans_.begin() || now >= std::prev(next)->set) return;
        session_ = *std::prev(next);
        sessions_.push_back({session_->mark, now, std::nullopt});
    }
    /// From now on these elements tell when the marked passes rise and set. Only of the very end of
    /// a pass under way they tell nothing, as that is too low to be listed.
    void enter(const TrueSky& sky, Instant now) {
        sky_ = &sky;
        const auto before = std::exchange(spans_, {});
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            const auto* pass = sky.find(marks_[i].satellite, marks_[i].pass);
            if (!pass || pass->maxElevation < unattended_.minElevation) continue;
            Span span{pass->rise, pass->set, i};
            const auto known = std::ranges::find(before, i, &Span::mark);
            if (now >= pass->low && known != before.end()) span = *known;
            spans_.push_back(span);
            if (session_ && session_->mark == i) session_->set = span.set;
        }
        std::ranges::sort(spans_, {}, &Span::rise);
    }

    const Unattended& unattended_;
    const std::vector<Mark>& marks_;
    const TrueSky* sky_ = nullptr;
    std::vector<Span> spans_;
    std::optional<Span> session_;
    std::vector<Session> sessions_;
};

class Comparison {
  public:
    Comparison(const std::vector<RehearsedEvent>& events, const Unattended& unattended)
        : events_(events), unattended_(unattended) {}

    Totals run() {
        readMarks();
        for (const auto& sky : unattended_.skies) expectWholePassesMarked(sky);
        expectSessions(PlainQueue(unattended_, marks_).play());
        expectSkipped();
        return totals_;
    }

  private:
    void readMarks() {
        Instant latest = unattended_.start();
        for (const auto& event : events_) {
            if (event.event == "queued") {
                ++totals_.queued;
                expectTrue(event);
                expectFree(event);
                marks_.push_back({event.satellite, event.pass()});
            } else if (event.event == "conflict") {
                ++totals_.conflicts;
                expectTrue(event);
                expectTaken(event);
                refused_.push_back({event.satellite, event.pass()});
            }
            latest = event.at;
        }
        EXPECT_LE(latest, unattended_.end());
    }
    /// What is marked is in the sky. Of a pass that is up at the very start no search sees the
    /// rise.
    void expectTrue(const RehearsedEvent& event) {
        const auto* pass = unattended_.skyAt(event.at).find(event.satellite, event.pass());
        ASSERT_TRUE(pass) << "no such pass: " << textOf(event.satellite, event.pass());
        if (pass->rise > unattended_.start()) {
            EXPECT_NEAR(event.rise - pass->rise, 0, kSecondsClose)
                << textOf(event.satellite, event.pass());
        }
        EXPECT_NEAR(event.set - pass->set, 0, kSecondsClose)
            << textOf(event.satellite, event.pass()) << " at " << event.at.unixSeconds();
        if (event.maxElevation < 89) {
            EXPECT_NEAR(event.maxElevation, pass->maxElevation, 0.01) << event.satellite;
        }
    }
    bool overlapsMark(const TruePass& pass) const {
        return std::ranges::any_of(marks_,
                                   [&pass](const Mark& mark) { return mark.pass.overlaps(pass); });
    }
    void expectFree(const RehearsedEvent& event) {
        auto pass = event.pass();
        // Other elements may have moved the marks by seconds since.
        pass.rise = pass.rise + slack();
        pass.set = pass.set - slack();
        EXPECT_FALSE(overlapsMark(pass)) << textOf(event.satellite, event.pass());
    }
    void expectTaken(const RehearsedEvent& event) {
        auto pass = event.pass();
        pass.rise = pass.rise - slack();
        pass.set = pass.set + slack();
        EXPECT_TRUE(overlapsMark(pass)) << textOf(event.satellite, event.pass());
    }
    double slack() const { return unattended_.skies.size() > 1 ? 60 : 0; }

    void expectWholePassesMarked(const TrueSky& sky) {
        for (const auto& [satellite, passes] : sky.passes) {
            for (const auto& pass : passes) {
                const bool isIts = &unattended_.skyAt(pass.rise) == &sky;
                const bool isInside =
                    pass.rise > unattended_.start() && pass.set < unattended_.end();
                if (!isIts || !isInside || pass.maxElevation < kLowestPeak + kDegreesClose)
                    continue;
                EXPECT_EQ(countOf(marks_, satellite, pass) + countOf(refused_, satellite, pass), 1)
                    << textOf(satellite, pass);
            }
        }
    }
    static std::ptrdiff_t countOf(const std::vector<Mark>& marks, const std::string& satellite,
                                  const TruePass& pass) {
        return std::ranges::count_if(marks, [&](const Mark& mark) {
            return mark.satellite == satellite && mark.pass.overlaps(pass);
        });
    }

    void expectSessions(const std::vector<Session>& sessions) {
        totals_.due = sessions.size();
        std::vector<std::string> expected;
        for (const auto& session : sessions) {
            const auto& mark = marks_[session.mark];
            tracked_.insert(session.mark);
            expected.push_back(lineOf("started", session.started, mark.satellite));
            if (session.ended) expected.push_back(lineOf("ended", *session.ended, mark.satellite));
        }
        std::vector<std::string> found;
        for (const auto& event : events_) {
            const bool starts = event.event == "started";
            const bool ends = event.event == "ended";
            totals_.started += starts ? 1 : 0;
            totals_.ended += ends ? 1 : 0;
            if (starts || ends) found.push_back(lineOf(event.event, event.at, event.satellite));
        }
        expectSame(found, expected);
    }
    static std::string lineOf(const std::string& what, Instant at, const std::string& satellite) {
        return fmt::format("{:.3f} {} {}", at.unixSeconds(), what, satellite);
    }

    /// A marked pass has a session, or is too low, or is slept through.
    void expectSkipped() {
        std::vector<Mark> skipped;
        for (const auto& event : events_) {
            if (event.event != "skipped") continue;
            ++totals_.skipped;
            skipped.push_back({event.satellite, event.pass()});
            const bool isLow = event.maxElevation < unattended_.minElevation;
            const bool isOverslept = unattended_.sleeps && event.why == "Has set";
            if (isOverslept) continue;
            EXPECT_TRUE(isLow) << textOf(event.satellite, event.pass());
            EXPECT_EQ(event.why, "Will not be tracked: stays under the minimum elevation");
        }
        for (std::size_t i = 0; i < marks_.size(); ++i) {
            if (marks_[i].pass.set >= unattended_.end()) continue;
            EXPECT_EQ(countOf(skipped, marks_[i].satellite, marks_[i].pass),
                      tracked_.contains(i) ? 0 : 1)
                << textOf(marks_[i].satellite, marks_[i].pass);
        }
    }

    const std::vector<RehearsedEvent>& events_;
    const Unattended& unattended_;
    std::vector<Mark> marks_;
    std::vector<Mark> refused_;
    std::set<std::size_t> tracked_;
    Totals totals_;
};

}  // namespace

RehearsedEvent readEvent(const std::string& line) {
    RehearsedEvent event;
    const auto value = parseJson(line);
    const auto* object = value ? value->if_object() : nullptr;
    if (!object) {
        ADD_FAILURE() << "no JSON object: " << line;
        return event;
    }
    std::vector<std::string> keys;
    for (const auto& member : *object) keys.emplace_back(member.key());
    EXPECT_EQ(keys, (std::vector<std::string>{"event", "at", "satellite", "rise", "set",
                                              "maxElevation", "why"}))
        << line;
    const auto text = [object](const char* key) {
        const auto* member = object->if_contains(key);
        return std::string(member && member->is_string() ? member->get_string().c_str() : "");
    };
    const auto number = [object](const char* key) {
        const auto* member = object->if_contains(key);
        return member && member->is_number() ? member->to_number<double>() : std::nan("");
    };
    event.event = text("event");
    event.at = Instant::fromUnixSeconds(number("at"));
    event.satellite = text("satellite");
    event.rise = Instant::fromUnixSeconds(number("rise"));
    event.set = Instant::fromUnixSeconds(number("set"));
    event.maxElevation = number("maxElevation");
    event.why = text("why");
    EXPECT_TRUE(std::isfinite(event.maxElevation) && event.rise < event.set) << line;
    return event;
}

const TruePass* TrueSky::find(const std::string& satellite, const TruePass& pass) const {
    const auto known = passes.find(satellite);
    if (known == passes.end()) return nullptr;
    const auto found = std::ranges::find_if(
        known->second, [&pass](const TruePass& each) { return each.overlaps(pass); });
    return found == known->second.end() ? nullptr : &*found;
}

TrueSky trueSky(const std::string& elements, const Site& site, Instant since, Instant from,
                Instant to) {
    TrueSky sky{since, {}};
    for (const auto& set : TLEManager::parseAuto(elements)) {
        const auto orbit = TLEParser::createSatRec(set);
        const GroundObserver observer(site.latitude, site.longitude, site.altitude / 1000);
        const auto elevation = [&](Instant at) {
            const auto look = lookAngles(orbit, at, observer);
            return look ? look->elevation : -90;
        };
        auto passes = truePasses(elevation, from, to);
        std::erase_if(passes,
                      [&](const TruePass& pass) { return pass.rise <= from || pass.set >= to; });
        sky.passes[set.name] = std::move(passes);
    }
    return sky;
}

const TrueSky& Unattended::skyAt(Instant t) const {
    const auto later = std::upper_bound(skies.begin(), skies.end(), t,
                                        [](Instant at, const auto& sky) { return at < sky.since; });
    return later == skies.begin() ? skies.front() : *std::prev(later);
}

Totals expectAsPlain(const std::vector<RehearsedEvent>& events, const Unattended& unattended) {
    return Comparison(events, unattended).run();
}

void expectMarkedAtOnce(const std::vector<RehearsedEvent>& events, const Unattended& unattended) {
    struct Listed {
        Instant at;
        Mark mark;
    };
    std::vector<Listed> listed;
    const Instant start = unattended.start();
    for (const auto& [satellite, passes] : unattended.skies.front().passes) {
        for (const auto& pass : passes) {
            const double wait = std::max(0.0, pass.set - kDaySeconds - start);
            Instant at = start + kSearchPeriod * std::ceil(wait / kSearchPeriod);
            // A search follows a body to a degree below the horizon before it lets its pass end.
            const bool isClose = at + kDaySeconds - pass.set < kSecondsToOneDegree;
            const Instant next = at + kSearchPeriod;
            if (isClose && isMarkedAt(events, next, {satellite, pass})) at = next;
            const bool isListed = pass.set > start && at <= unattended.end();
            if (isListed && pass.maxElevation >= kLowestPeak) {
                listed.push_back({at, {satellite, pass}});
            }
        }
    }
    std::ranges::sort(listed, [](const Listed& a, const Listed& b) {
        return std::pair(a.at, a.mark.pass.rise) < std::pair(b.at, b.mark.pass.rise);
    });

    std::vector<TruePass> taken;
    std::vector<std::string> expected;
    for (const auto& [at, mark] : listed) {
        const bool isFree = std::ranges::none_of(
            taken, [&](const TruePass& pass) { return pass.overlaps(mark.pass); });
        if (isFree) taken.push_back(mark.pass);
        expected.push_back(fmt::format("{:.3f} {} {}", at.unixSeconds(),
                                       isFree ? "queued" : "conflict", mark.satellite));
    }
    std::vector<std::string> found;
    for (const auto& event : events) {
        if (event.event != "queued" && event.event != "conflict") continue;
        found.push_back(
            fmt::format("{:.3f} {} {}", event.at.unixSeconds(), event.event, event.satellite));
    }
    expectSame(found, expected);
}

}  // namespace veloran::test
