#include "elements/omm_reader.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <variant>

#include "base/json_events.h"

namespace veloran {

namespace {

using Member =
    std::variant<std::string OMMRecord::*, double OMMRecord::*, std::int64_t OMMRecord::*>;

struct Field {
    std::string_view name;
    Member member;
    bool isRequired = true;
};

/// In the order in which the services write them, which is where a search finds them at once.
constexpr std::array kFields{
    Field{"OBJECT_NAME", &OMMRecord::objectName},
    Field{"OBJECT_ID", &OMMRecord::objectId, false},
    Field{"EPOCH", &OMMRecord::epoch},
    Field{"MEAN_MOTION", &OMMRecord::meanMotion},
    Field{"ECCENTRICITY", &OMMRecord::eccentricity},
    Field{"INCLINATION", &OMMRecord::inclination},
    Field{"RA_OF_ASC_NODE", &OMMRecord::raOfAscNode},
    Field{"ARG_OF_PERICENTER", &OMMRecord::argOfPericenter},
    Field{"MEAN_ANOMALY", &OMMRecord::meanAnomaly},
    Field{"EPHEMERIS_TYPE", &OMMRecord::ephemerisType, false},
    Field{"CLASSIFICATION_TYPE", &OMMRecord::classificationType, false},
    Field{"NORAD_CAT_ID", &OMMRecord::noradCatId},
    Field{"ELEMENT_SET_NO", &OMMRecord::elementSetNo, false},
    Field{"REV_AT_EPOCH", &OMMRecord::revAtEpoch, false},
    Field{"BSTAR", &OMMRecord::bstar},
    Field{"MEAN_MOTION_DOT", &OMMRecord::meanMotionDot, false},
    Field{"MEAN_MOTION_DDOT", &OMMRecord::meanMotionDdot, false},
};

constexpr std::uint32_t requiredFields() {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < kFields.size(); ++i) {
        if (kFields[i].isRequired) bits |= 1u << i;
    }
    return bits;
}
constexpr std::uint32_t kRequired = requiredFields();

/// The record that is being read.
class RecordInProgress {
  public:
    const OMMRecord& record() const { return record_; }
    bool isSound() const { return faults_ == 0; }

    void begin() {
        static const OMMRecord blank;
        record_ = blank;  // by copy, which keeps the memory of its texts
        faults_ = kRequired;
        field_ = kFields.size() - 1;
        bit_ = 0;
    }

    void choose(std::string_view name) {
        for (std::size_t i = 0; i < kFields.size(); ++i) {
            field_ = field_ + 1 < kFields.size() ? field_ + 1 : 0;
            bit_ = 1u << field_;
            if (kFields[field_].name == name) return;
        }
        bit_ = 0;
    }

    // The value of the member that was chosen last.

    void setText(std::string_view value) {
        if (auto* target = chosen<std::string>()) {
            *target = value;
            return judge(true);
        }
        judge(false);
    }
    void setNumber(double value) {
        if (auto* target = chosen<double>()) {
            *target = value;
            return judge(std::isfinite(value));
        }
        judge(setWhole(value));
    }
    void setInteger(std::int64_t value) {
        if (auto* target = chosen<std::int64_t>()) {
            *target = value;
            return judge(true);
        }
        setNumber(static_cast<double>(value));
    }
    void setNull() {
        if (bit_ & kRequired) return judge(false);
        if (auto* text = chosen<std::string>()) text->clear();
        if (auto* number = chosen<double>()) *number = 0;
        if (auto* whole = chosen<std::int64_t>()) *whole = 0;
        judge(true);
    }
    void judge(bool isSound) { faults_ = isSound ? faults_ & ~bit_ : faults_ | bit_; }

  private:
    /// Where the chosen member goes; null for another type, and where none is known.
    template <class T>
    T* chosen() {
        if (bit_ == 0) return nullptr;
        const auto* member = std::get_if<T OMMRecord::*>(&kFields[field_].member);
        return member ? &(record_.**member) : nullptr;
    }
    /// A whole number may be written as 25544.0 too.
    bool setWhole(double value) {
        auto* target = chosen<std::int64_t>();
        if (!target || std::trunc(value) != value || !(std::abs(value) < 0x1p63)) return false;
        *target = static_cast<std::int64_t>(value);
        return true;
    }

    OMMRecord record_;
    std::uint32_t faults_ = 0;  // members that lack a sound value, by their place in kFields
    std::size_t field_ = 0;
    std::uint32_t bit_ = 0;  // of the chosen member; 0 where it is none of kFields
};

/// Takes the values of a text (JsonEvents).
class OMMReader {
  public:
    explicit OMMReader(const std::function<bool(const OMMRecord&)>& take) : take_(take) {}

    bool beginObject() {
        if (depth_ == 0) return false;
        if (depth_ == kInList) record_.begin();
        return enter();
    }
    bool endObject(std::size_t) {
        if (--depth_ != kInList) return true;
        return record_.isSound() && take_(record_.record());
    }
    bool beginArray() { return depth_ != kInList && enter(); }
    bool endArray(std::size_t) { return --depth_, true; }
    bool key(std::string_view name) {
        if (depth_ == kInRecord) record_.choose(name);
        return true;
    }

    bool text(std::string_view value) {
        return set([&] { record_.setText(value); });
    }
    bool whole(std::int64_t value) {
        return set([&] { record_.setInteger(value); });
    }
    bool whole(std::uint64_t value) {
        return set([&] { record_.setNumber(static_cast<double>(value)); });
    }
    bool number(double value) {
        return set([&] { record_.setNumber(value); });
    }
    bool boolean(bool) {
        return set([&] { record_.judge(false); });
    }
    bool null() {
        return set([&] { record_.setNull(); });
    }

  private:
    static constexpr int kInList = 1;
    static constexpr int kInRecord = 2;

    /// No member of a message is a list or an object.
    bool enter() {
        if (depth_ == kInRecord) record_.judge(false);
        return ++depth_, true;
    }
    /// A plain value, which is no message by itself.
    template <class Set>
    bool set(Set set) {
        if (depth_ == kInRecord) set();
        return depth_ >= kInRecord;
    }

    const std::function<bool(const OMMRecord&)>& take_;
    RecordInProgress record_;
    int depth_ = 0;  // of open lists and objects
};

}  // namespace

bool readOMM(std::string_view text, const std::function<bool(const OMMRecord&)>& take) {
    OMMReader reader(take);
    return readJsonEvents(text, reader);
}

}  // namespace veloran
