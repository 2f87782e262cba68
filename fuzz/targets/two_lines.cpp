// A name and two lines, each ended by a line feed.

#include "base/text.h"
#include "checks.h"
#include "element_properties.h"
#include "elements/tle_parser.h"
#include "require.h"

namespace veloran::fuzz {

void checkTwoLines(std::string_view bytes) {
    auto pieces = split(bytes, '\n');
    pieces.resize(3);
    const auto set = TLEParser::parseTwoLines(pieces[0], pieces[1], pieces[2]);
    if (!set) return;
    require(set->name == pieces[0] && set->line1 == pieces[1] && set->line2 == pieces[2],
            "a set keeps the texts it was read from");
    require(set->epochYear >= 1900 && set->epochYear < 2100, "two digits name a year");
    requireSoundOrbit(*set);
    requireSameSearch(*set);
    if (!fitsColumns(*set)) return;

    const Lines lines = writtenLines(*set);
    requireReadsBack(*set, lines);
    const auto again = TLEParser::parseTwoLines(set->name, lines.line1, lines.line2);
    if (lines.line1.substr(61, 3) != " 0 ") return;  // the drag term is wider than its columns
    const Lines twice = writtenLines(*again);
    require(twice.line1 == lines.line1 && twice.line2 == lines.line2,
            "lines that were written once are written alike again");
}

}  // namespace veloran::fuzz
