#pragma once

#include <QStringList>
#include <functional>
#include <memory>

#include "core/app_state.h"
#include "ui/sheet.h"

class QPushButton;

namespace veloran {

class ElementEditor;
class ValueLabel;

/// Takes in elements that no group of the service holds: pasted, from a file, or from files dropped
/// on it. It stays open, so that several can follow each other.
class TLEImportSheet : public Sheet {
    Q_OBJECT
  public:
    TLEImportSheet(std::shared_ptr<AppState> state, QWidget* window);

    /// Imports the files and shows what came of them; does nothing while an import runs. Closing
    /// the sheet meanwhile stops nothing.
    void importFiles(const QStringList& paths);

    QSize sizeHint() const override { return {600, 540}; }

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    QWidget* makeTitleRow();
    QWidget* makeInput();
    QWidget* makeExample();
    QWidget* makeResultRow();
    QWidget* makeButtonRow();

    void openFile();
    void importFromPaste();
    void importText(const QString& text);
    std::function<void(const ImportMessage&)> begin();
    void handleResult(const ImportMessage& message);
    void setBusy(bool busy);
    void updateButtons();

    std::shared_ptr<AppState> state_;
    bool isBusy_ = false;
    ElementEditor* editor_ = nullptr;
    QWidget* resultRow_ = nullptr;
    QWidget* failureSymbol_ = nullptr;
    QWidget* successSymbol_ = nullptr;
    ValueLabel* resultMessage_ = nullptr;
    QWidget* progress_ = nullptr;
    QPushButton* load_ = nullptr;
    QPushButton* import_ = nullptr;
};

}  // namespace veloran
