#include "ui/browser/browser_commands.h"

#include <QKeyEvent>

namespace veloran {

namespace {

constexpr Qt::KeyboardModifiers kCommand = Qt::ControlModifier;

Qt::KeyboardModifiers modifiers(const QKeyEvent& event) {
    return event.modifiers() & ~Qt::KeypadModifier;
}

RowPart groupCommand(const QKeyEvent& event, const SectionLook& look) {
    switch (event.key()) {
        case Qt::Key_A:
            return RowPart::all;
        case Qt::Key_S:
            return look.isSubscribed ? RowPart::subscription : RowPart::nothing;
        case Qt::Key_Delete:
            return look.canClear ? RowPart::clear : RowPart::nothing;
        default:
            return RowPart::nothing;
    }
}

}  // namespace

RowPart sectionPartOfKey(const QKeyEvent& event, const SectionLook& look) {
    const auto held = modifiers(event);
    if (held == kCommand) return groupCommand(event, look);
    if (held == (kCommand | Qt::ShiftModifier)) {
        return event.key() == Qt::Key_A ? RowPart::none : RowPart::nothing;
    }
    if (held != Qt::NoModifier) return RowPart::nothing;
    switch (event.key()) {
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return RowPart::title;
        default:
            return RowPart::nothing;
    }
}

RowPart satellitePartOfKey(const QKeyEvent& event, bool inImported) {
    if (modifiers(event) != Qt::NoModifier) return RowPart::nothing;
    switch (event.key()) {
        case Qt::Key_Space:
            return RowPart::checkBox;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return RowPart::details;
        case Qt::Key_Delete:
            return inImported ? RowPart::remove : RowPart::nothing;
        default:
            return RowPart::nothing;
    }
}

bool isTyping(const QKeyEvent& event) {
    constexpr auto kNoText = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (event.modifiers() & kNoText) return false;
    if (event.key() == Qt::Key_Backspace) return true;
    const QString text = event.text();
    return !text.isEmpty() && text.front().isPrint() && !text.front().isSpace();
}

std::vector<MenuEntry> sectionMenu(const SectionLook& look, bool isOpen) {
    std::vector<MenuEntry> menu{{RowPart::title, isOpen ? "Close\tEnter" : "Open\tEnter"},
                                {RowPart::all, "Track All\tCtrl+A"},
                                {RowPart::none, "Track None\tCtrl+Shift+A"}};
    if (look.isSubscribed) {
        menu.push_back({RowPart::subscription,
                        *look.isSubscribed ? "Unsubscribe\tCtrl+S" : "Subscribe\tCtrl+S"});
    }
    if (look.canClear) menu.push_back({RowPart::clear, "Remove All Imported\tCtrl+Delete"});
    return menu;
}

std::vector<MenuEntry> satelliteMenu(const SatelliteRowLook& look, bool isImported) {
    std::vector<MenuEntry> menu{
        {RowPart::checkBox, look.isSelected ? "Do Not Track\tSpace" : "Track\tSpace"},
        {RowPart::details, "Details\tEnter"}};
    if (isImported) menu.push_back({RowPart::remove, "Remove Imported Elements\tDelete"});
    return menu;
}

}  // namespace veloran
