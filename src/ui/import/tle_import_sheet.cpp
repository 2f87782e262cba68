#include "ui/import/tle_import_sheet.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/import/element_editor.h"
#include "ui/import/import_run.h"
#include "ui/import/local_files.h"
#include "ui/theme.h"
#include "ui/widgets/disclosure.h"
#include "ui/widgets/divider.h"
#include "ui/widgets/prominent_button.h"
#include "ui/widgets/spinner.h"
#include "ui/widgets/symbol_view.h"
#include "ui/widgets/text_box.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr int kPadding = 12;
constexpr int kResultSymbol = 14;

constexpr const char* kExample =
    "ISS (ZARYA)\n"
    "1 25544U 98067A   26095.54791667  .00016717  00000+0  10270-3 0  9994\n"
    "2 25544  51.6412  10.7412 0002819  32.7451  12.4721 15.50073832123456";

QPushButton* named(QPushButton* button, const char* name) {
    constexpr int kRoom = 20;
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 2 * kRoom);
    button->setObjectName(name);
    button->setAccessibleName(button->text());
    return button;
}

ValueLabel* makeHint(int pixels, double opacity, const QString& text) {
    auto* hint = new ValueLabel({pixels, QFont::Normal, Ink::secondary, opacity, false}, text);
    hint->setElastic();
    return hint;
}

}  // namespace

TLEImportSheet::TLEImportSheet(std::shared_ptr<AppState> state, QWidget* window)
    : Sheet(tr("Import TLE Data"), window), state_(std::move(state)) {
    setObjectName("importSheet");
    setMinimumSize(550, 500);
    setAcceptDrops(true);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makeTitleRow());
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(makeInput(), 1);
    column->addWidget(makeResultRow());
    column->addWidget(new Divider(Qt::Horizontal));
    column->addWidget(makeButtonRow());

    connect(editor_, &QPlainTextEdit::textChanged, this, &TLEImportSheet::updateButtons);
    connect(editor_, &ElementEditor::filesGiven, this, &TLEImportSheet::importFiles);
    connect(editor_, &ElementEditor::largeTextGiven, this, &TLEImportSheet::importText);
    updateButtons();
    editor_->setFocus();
}

QWidget* TLEImportSheet::makeTitleRow() {
    auto* title = new QWidget;
    auto* close = named(new QPushButton(tr("Close")), "closeImport");
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* row = new QHBoxLayout(title);
    row->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    row->addWidget(
        new ValueLabel({14, QFont::Bold, Ink::primary, 1, false}, tr("Import TLE Data")));
    row->addStretch();
    row->addWidget(close);
    return title;
}

QWidget* TLEImportSheet::makeInput() {
    editor_ = new ElementEditor;
    editor_->setObjectName("pasteText");
    editor_->setAccessibleName(tr("TLE data"));
    auto* box = new TextBox(editor_, TextBox::Outline::always);
    box->setMinimumHeight(200);
    auto* example = new Disclosure(tr("Example format"), 10, makeExample());
    example->setObjectName("exampleFormat");

    auto* hints = new QVBoxLayout;
    hints->setSpacing(4);
    hints->addWidget(makeHint(
        11, 1, tr("Paste TLE data below, or click 'Load File…' to open a .txt or .json file.")));
    hints->addWidget(makeHint(
        10, 0.7, tr("Supports three-line TLE, two-line TLE, CelesTrak JSON, and SatNOGS JSON.")));
    auto* input = new QWidget;
    auto* column = new QVBoxLayout(input);
    column->setContentsMargins(kPadding, 10, kPadding, 10);
    column->setSpacing(10);
    column->addLayout(hints);
    column->addWidget(box, 1);
    column->addWidget(example);
    return input;
}

QWidget* TLEImportSheet::makeExample() {
    auto* example = new QLabel(kExample);
    example->setObjectName("exampleText");
    example->setTextFormat(Qt::PlainText);
    example->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    example->setFont(Theme::mono(10));
    example->setContentsMargins(4, 4, 4, 4);
    return example;
}

QWidget* TLEImportSheet::makeResultRow() {
    resultRow_ = new QWidget;
    resultRow_->setObjectName("resultRow");
    failureSymbol_ = new SymbolView(Symbol::crossDisc, kResultSymbol, Ink::red);
    failureSymbol_->setObjectName("failureSymbol");
    successSymbol_ = new SymbolView(Symbol::checkDisc, kResultSymbol, Ink::green);
    successSymbol_->setObjectName("successSymbol");
    resultMessage_ = new ValueLabel({11, QFont::Normal, Ink::primary, 1, false});
    resultMessage_->setObjectName("resultMessage");
    resultMessage_->setElastic();
    auto* row = new QHBoxLayout(resultRow_);
    row->setContentsMargins(kPadding, 6, kPadding, 6);
    row->addWidget(failureSymbol_);
    row->addWidget(successSymbol_);
    row->addWidget(resultMessage_, 1);
    resultRow_->hide();
    return resultRow_;
}

QWidget* TLEImportSheet::makeButtonRow() {
    load_ = named(new QPushButton(tr("Load File…")), "loadFile");
    connect(load_, &QPushButton::clicked, this, &TLEImportSheet::openFile);
    import_ = named(new ProminentButton(tr("Import from Text"), Ink::blue), "importFromText");
    import_->setDefault(true);
    connect(import_, &QPushButton::clicked, this, &TLEImportSheet::importFromPaste);

    progress_ = new QWidget;
    progress_->setObjectName("importProgress");
    auto* progressRow = new QHBoxLayout(progress_);
    progressRow->setContentsMargins(0, 0, 0, 0);
    progressRow->addWidget(new Spinner(state_->loop(), 14));
    progressRow->addWidget(
        new ValueLabel({11, QFont::Normal, Ink::secondary, 1, false}, tr("Importing…")));
    progress_->hide();

    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    row->addWidget(load_);
    row->addWidget(progress_);
    row->addStretch();
    row->addWidget(import_);
    return buttons;
}

void TLEImportSheet::openFile() {
    auto* dialog = new QFileDialog(this, tr("Select TLE file"), QDir::homePath());
    dialog->setObjectName("selectTleFile");
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilters({tr("Element text and JSON (*.txt *.tle *.json)"), tr("All files (*)")});
    connect(dialog, &QFileDialog::filesSelected, this, &TLEImportSheet::importFiles);
    dialog->open();
}

void TLEImportSheet::importFromPaste() {
    importText(editor_->toPlainText());
}

void TLEImportSheet::importText(const QString& text) {
    if (!isBusy_) veloran::importText(state_, text.toStdString(), begin());
}

void TLEImportSheet::importFiles(const QStringList& paths) {
    if (!isBusy_) veloran::importFiles(state_, paths, begin());
}

/// Shows that an import runs; the result ends that, if the sheet is still there.
ImportReport TLEImportSheet::begin() {
    setBusy(true);
    return [sheet = QPointer(this)](const ImportMessage& message) {
        if (sheet) sheet->handleResult(message);
    };
}

void TLEImportSheet::handleResult(const ImportMessage& message) {
    resultMessage_->setText(message.text);
    failureSymbol_->setVisible(message.isError);
    successSymbol_->setVisible(!message.isError);
    resultRow_->show();
    if (!message.isError) editor_->clear();
    setBusy(false);
}

void TLEImportSheet::setBusy(bool busy) {
    isBusy_ = busy;
    // A button that gives up the keyboard must not hand it to "Close".
    if (busy) editor_->setFocus();
    editor_->setReadOnly(busy);
    progress_->setVisible(busy);
    updateButtons();
}

void TLEImportSheet::updateButtons() {
    load_->setEnabled(!isBusy_);
    import_->setEnabled(!isBusy_ && editor_->hasText());
}

void TLEImportSheet::dragEnterEvent(QDragEnterEvent* event) {
    if (!isBusy_ && !localFiles(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void TLEImportSheet::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    importFiles(localFiles(*event->mimeData()));
}

}  // namespace veloran
