#pragma once

#include <string>
#include <vector>

#include "ui/browser/browser_columns.h"

class QKeyEvent;

namespace veloran {

// What keys and menus of the browser's rows mean, as pure functions. Letters alone mean nothing:
// they are for the search.

RowPart sectionPartOfKey(const QKeyEvent& event, const SectionLook& look);
/// `inImported`: the row stands among the imported satellites.
RowPart satellitePartOfKey(const QKeyEvent& event, bool inImported);
/// Whether the key writes a character that is no blank, or takes one away.
bool isTyping(const QKeyEvent& event);

/// An entry of a row's menu, with its key behind a tab.
struct MenuEntry {
    RowPart part = RowPart::nothing;
    std::string text;
    bool operator==(const MenuEntry&) const = default;
};
std::vector<MenuEntry> sectionMenu(const SectionLook& look, bool isOpen);
std::vector<MenuEntry> satelliteMenu(const SatelliteRowLook& look, bool isImported);

}  // namespace veloran
