#pragma once

#include <QTreeView>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "core/satellite.h"
#include "ui/browser/browser_columns.h"
#include "ui/browser/browser_commands.h"

namespace veloran {

class BrowserModel;
class BrowserRowDelegate;

/// The sections and their satellites. Its rows have buttons without being widgets: the delegate
/// paints them, the view answers the pointer and the keys; what a row can do stands in its menu,
/// too. It stays open where it was, where it was
/// scrolled to and on the row it was on when the catalogue is replaced below it.
class BrowserTree : public QTreeView {
    Q_OBJECT
  public:
    explicit BrowserTree(BrowserModel& model, QWidget* parent = nullptr);

    const std::set<std::string>& expandedCategories() const { return expandedCategories_; }
    void toggleExpanded(const QModelIndex& section);
    /// Has those of the visible rows drawn again that look different by now.
    void updateVisibleRows();
    /// What a search has found is read from its beginning, or from the row that one was on.
    void showFound();
    /// Takes the keyboard over, on the first row if it was on none.
    void enter();

  signals:
    /// A key that writes, or takes away what was written: for the search field.
    void typed(QKeyEvent& event);
    void toggled(const veloran::SatellitePtr& satellite);
    void detailsRequested(const veloran::SatellitePtr& satellite);
    /// Of every satellite of the section.
    void selectionRequested(const QModelIndex& section, bool selected);
    void clearRequested();
    /// Of an imported satellite.
    void removalRequested(const veloran::SatellitePtr& satellite);
    void subscriptionToggled(const std::string& key);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    /// A row by what it shows, and how far its top is above the top of the view.
    struct Place {
        std::string key;
        std::optional<std::int64_t> satelliteId;
        int offset = 0;
    };
    /// A button of a row.
    struct Button {
        QPersistentModelIndex index;
        RowPart part = RowPart::nothing;
        bool operator==(const Button&) const = default;
    };
    using RowLook = std::variant<SectionLook, SatelliteRowLook>;

    void keepExpansion(const QModelIndex& section, bool isOpen);
    std::optional<Place> placeOf(const QModelIndex& index) const;
    QModelIndex indexOf(const std::optional<Place>& place) const;
    void rememberPlace();
    void restorePlace();

    Button buttonAt(const QPoint& at) const;
    void hover(const Button& button);
    void act(const QModelIndex& index, RowPart part);
    RowPart partOfKey(const QKeyEvent& event, const QModelIndex& index) const;
    std::vector<MenuEntry> menuOf(const QModelIndex& index) const;
    RowLook lookOf(const QModelIndex& index) const;

    BrowserModel& model_;
    BrowserRowDelegate* delegate_;
    std::set<std::string> expandedCategories_{"amateur", "custom"};
    Button pressed_;
    Button hovered_;
    int scrolled_ = 0;
    std::optional<Place> top_;
    std::optional<Place> current_;
    std::vector<RowLook> visibleLooks_;
};

}  // namespace veloran
