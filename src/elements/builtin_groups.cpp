#include "elements/builtin_groups.h"

namespace veloran {

namespace {

constexpr const char* kStations = "Amateur & Stations";
constexpr const char* kSpecial = "Special";
constexpr const char* kEarth = "Weather & Earth";
constexpr const char* kNavigation = "Navigation";
constexpr const char* kCommunications = "Communications";
constexpr const char* kScientific = "Scientific";

constexpr BuiltinGroup kGroups[] = {
    {"amateur", "amateur", "Amateur Radio", kStations},
    {"stations", "stations", "Space Stations", kStations},
    {"cubesat", "cubesat", "CubeSats", kStations},
    {"satnogs", "satnogs", "SatNOGS", kStations},
    {"tle-new", "last-30-days", "Last 30 Days' Launches", kSpecial},
    {"active", "active", "All Active (large, ~11k)", kSpecial},
    {"visual", "visual", "100 (or so) Brightest", kSpecial},
    {"weather", "weather", "Weather", kEarth},
    {"noaa", "noaa", "NOAA Weather", kEarth},
    {"goes", "goes", "GOES", kEarth},
    {"resource", "resource", "Earth Resources", kEarth},
    {"sarsat", "sarsat", "Search & Rescue", kEarth},
    {"dmc", "dmc", "Disaster Monitoring", kEarth},
    {"tdrss", "tdrss", "TDRSS", kEarth},
    {"argos", "argos", "Argos DCS", kEarth},
    {"planet", "planet", "Planet", kEarth},
    {"spire", "spire", "Spire", kEarth},
    {"gnss", "gnss", "GNSS", kNavigation},
    {"gps-ops", "gps-ops", "GPS Operational", kNavigation},
    {"glo-ops", "glo-ops", "GLONASS Operational", kNavigation},
    {"galileo", "galileo", "Galileo", kNavigation},
    {"beidou", "beidou", "BeiDou", kNavigation},
    {"sbas", "sbas", "SBAS", kNavigation},
    {"geo", "geo", "Active Geosynchronous", kCommunications},
    {"intelsat", "intelsat", "Intelsat", kCommunications},
    {"ses", "ses", "SES", kCommunications},
    {"iridium", "iridium", "Iridium", kCommunications},
    {"iridium-NEXT", "iridium-NEXT", "Iridium NEXT", kCommunications},
    {"starlink", "starlink", "Starlink (very large)", kCommunications},
    {"oneweb", "oneweb", "OneWeb", kCommunications},
    {"orbcomm", "orbcomm", "Orbcomm", kCommunications},
    {"globalstar", "globalstar", "Globalstar", kCommunications},
    {"swarm", "swarm", "Swarm", kCommunications},
    {"x-comm", "x-comm", "Experimental Comm", kCommunications},
    {"other-comm", "other-comm", "Other Comm", kCommunications},
    {"science", "science", "Space & Earth Science", kScientific},
    {"geodetic", "geodetic", "Geodetic", kScientific},
    {"engineering", "engineering", "Engineering", kScientific},
    {"education", "education", "Education", kScientific},
    {"military", "military", "Military", kScientific},
    {"radar", "radar", "Radar Calibration", kScientific},
};

}  // namespace

std::span<const BuiltinGroup> builtinGroups() {
    return kGroups;
}

}  // namespace veloran
