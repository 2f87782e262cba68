#pragma once

#include <QWidget>
#include <memory>
#include <vector>

#include "core/app_state.h"

class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace veloran {

class FieldMark;
class SwitchRow;

/// The user's own download addresses: a switch for each, a row to add one, and ready-made offers.
/// What is no web address, or stands in the list already, is refused beside the row.
class CustomSources : public QWidget {
    Q_OBJECT
  public:
    explicit CustomSources(std::shared_ptr<AppState> state);

    const std::vector<UserTLESource>& sources() const { return sources_; }
    /// Brings the switches up to date.
    void showSubscriptions();
    /// Brings what the rows tell of their downloads up to date.
    void showDownloads();

  signals:
    void sourcesChanged();

  private:
    struct Row {
        QWidget* area;
        SwitchRow* subscription;
        QWidget* remove;
    };

    QWidget* makeRowsArea();
    Row makeRow(const UserTLESource& source);
    QWidget* makeAddRow();
    QWidget* makePresets();
    void addNewUserSource();
    QString refusalOf(const QString& url) const;
    void refuse(const QString& why);
    void addSource(const std::string& name, const std::string& url);
    void removeUserSource(const UserTLESource& source);
    void readSources();
    void showRows();
    void enableButtons();
    bool isKnown(const std::string& url) const;

    std::shared_ptr<AppState> state_;
    std::vector<UserTLESource> sources_;
    QVBoxLayout* column_ = nullptr;  // of the rows
    std::vector<Row> rows_;          // as many as sources_
    QLineEdit* name_ = nullptr;
    QLineEdit* url_;
    QPushButton* add_;
    FieldMark* refusal_ = nullptr;
    std::vector<QPushButton*> presets_;  // as many as state_->presetSources()
};

}  // namespace veloran
