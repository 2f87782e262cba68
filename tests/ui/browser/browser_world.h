#pragma once

#include <set>
#include <string>
#include <vector>

#include "../ui_fixture.h"
#include "ui/browser/browser_model.h"

namespace veloran::test {

/// A small catalogue of every kind of section, not in the order of names.
class BrowserFixture : public UiFixture {
  protected:
    SatellitePtr add(const std::string& name, std::int64_t id, std::set<std::string> sources,
                     std::vector<Transmitter> channels = {}) {
        auto satellite = std::make_shared<Satellite>(name, id, std::move(channels));
        satellite->sources = std::move(sources);
        auto all = state->satellites.get();
        all.push_back(satellite);
        state->satellites = all;
        return satellite;
    }

    BrowserFixture() {
        state->selectedSatelliteIds = std::set<std::int64_t>{};
        state->subscribedCategories = std::set<std::string>{"amateur"};
    }

    static QModelIndex heading(const BrowserModel& model, const char* key) {
        return model.find(key, std::nullopt);
    }

    static std::vector<std::string> keys(const BrowserModel& model) {
        std::vector<std::string> result;
        for (int i = 0; i < model.rowCount(); ++i) {
            result.push_back(model.section(model.index(i, 0)).key);
        }
        return result;
    }

    static std::vector<std::int64_t> ids(const BrowserModel& model, const char* key) {
        std::vector<std::int64_t> result;
        const QModelIndex section = heading(model, key);
        for (int i = 0; i < model.rowCount(section); ++i) {
            result.push_back(model.satellite(model.index(i, 0, section))->id);
        }
        return result;
    }

    using Ids = std::vector<std::int64_t>;
    using Selection = std::set<std::int64_t>;
    using Keys = std::vector<std::string>;

    SatellitePtr station = add("ISS (ZARYA)", 25544, {"stations", "amateur"},
                               {channel("down", 145.8e6), channel("up", 145.99e6)});
    SatellitePtr old = add("AO-7", 7530, {"amateur"}, {channel("down", 145.95e6)});
    SatellitePtr sun = add("Sun", -1, {"celestial"});
    SatellitePtr own = add("Home brew", 99001, {"custom"});
    SatellitePtr stray = add("Stray", 401, {});
};

}  // namespace veloran::test
