#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>

#include "base/instant.h"
#include "support/vectors.h"

namespace veloran::test {

/// A text format by its arguments, by position.
using Format = std::function<boost::json::value(const boost::json::array& args)>;
using Formats = std::map<std::string_view, Format>;

inline Format ofNumber(std::string (*format)(double)) {
    return [format](const boost::json::array& a) {
        return boost::json::value(format(number(a.at(0))));
    };
}

inline Instant instant(const boost::json::value& seconds) {
    return Instant{number(seconds)};
}

/// Runs every case of text_formats.json that asks for one of these; each must have a case.
inline void expectFormats(const Formats& formats) {
    const auto file = loadVectors("data/text_formats.json");
    std::set<std::string_view> seen;
    forEachCase(file, "text_formats.json", "cases", [&](const boost::json::object& c) {
        expectKnownMembers(c, {"id", "note", "function", "args", "expected"}, "case");
        const std::string_view name = c.at("function").as_string();
        const auto format = formats.find(name);
        if (format == formats.end()) return;
        seen.insert(format->first);
        const boost::json::value actual = format->second(c.at("args").as_array());
        if (actual.is_double()) {
            EXPECT_TRUE(closeTo(actual.as_double(), number(c.at("expected")))) << name;
        } else {
            EXPECT_EQ(actual, c.at("expected")) << name;
        }
    });
    EXPECT_EQ(seen.size(), formats.size()) << "a format has no case";
}

}  // namespace veloran::test
