#pragma once

#include <QAbstractListModel>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "ui/paint.h"

namespace veloran {

/// Everything a row of the favourites shows; a text with nothing to show is empty.
struct FavoriteLook {
    std::string name;
    RgbColor color;
    std::string sources;
    std::string sourcesHelp;
    std::string age;
    Tint ageInk;
    std::string passes;
    std::string passesHelp;
    std::string channel;
};
FavoriteLook favoriteLook(const Satellite& satellite, const std::vector<UserTLESource>& userSources,
                          Instant now);
/// The row in words, for a screen reader.
std::string spokenFavorite(const FavoriteLook& look);

/// The favourites by name. What a row shows is made when it is seen.
class FavoritesModel : public QAbstractListModel {
    Q_OBJECT
  public:
    explicit FavoritesModel(std::shared_ptr<AppState> state, QObject* parent = nullptr);

    /// Takes the favourites; rows are made anew only when others than before are among them.
    void setSatellites(std::vector<SatellitePtr> satellites);
    /// Lets all rows that are seen be drawn again.
    void updateLooks();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    const SatellitePtr& satellite(int row) const {
        return satellites_[static_cast<std::size_t>(row)];
    }
    FavoriteLook look(int row) const;

  private:
    std::shared_ptr<AppState> state_;
    std::vector<SatellitePtr> satellites_;
};

}  // namespace veloran
