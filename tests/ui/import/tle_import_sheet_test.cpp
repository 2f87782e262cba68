#include "ui/import/tle_import_sheet.h"

#include <QClipboard>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QUrl>
#include <algorithm>

#include "../ui_fixture.h"
#include "ui/import/element_editor.h"

namespace veloran::test {
namespace {

constexpr const char* kStation =
    "ISS (ZARYA)\n"
    "1 25544U 98067A   26095.54791667  .00016717  00000+0  10270-3 0  9994\n"
    "2 25544  51.6412  10.7412 0002819  32.7451  12.4721 15.50073832123456\n";
constexpr const char* kOther =
    "OTHER\n"
    "1 25545U 98067A   26095.54791667  .00016717  00000+0  10270-3 0  9994\n"
    "2 25545  51.6412  10.7412 0002819  32.7451  12.4721 15.50073832123456\n";

class TLEImportSheetTest : public UiFixture {
  protected:
    void SetUp() override {
        sheet->setAttribute(Qt::WA_DeleteOnClose, false);
        sheet->present();
    }

    QPlainTextEdit& editor() { return child<QPlainTextEdit>(*sheet, "pasteText"); }
    QPushButton& importButton() { return child<QPushButton>(*sheet, "importFromText"); }
    QPushButton& loadButton() { return child<QPushButton>(*sheet, "loadFile"); }
    QString result() { return textOf(*sheet, "resultMessage"); }
    bool isBusy() { return isShown(*sheet, "importProgress"); }

    QString write(const QString& name, const QByteArray& content) {
        QFile file(directory.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    /// Lets the import end, in both its worlds: the disk's and the simulated machine's.
    template <class Condition>
    bool settle(Condition isDone) {
        return QTest::qWaitFor(
            [&] {
                machine.loop.runPosted();
                return isDone();
            },
            kPatienceMs);
    }
    bool settle() {
        return settle([this] { return !isBusy(); });
    }

    bool knows(std::int64_t id) {
        machine.loop.runPosted();
        return std::ranges::any_of(state->satellites.get(),
                                   [id](const SatellitePtr& s) { return s->id == id; });
    }

    void importPasted(const QString& text) {
        editor().setPlainText(text);
        importButton().click();
        EXPECT_TRUE(settle());
    }

    static std::unique_ptr<QMimeData> filesOf(const QStringList& paths) {
        auto data = std::make_unique<QMimeData>();
        QList<QUrl> urls;
        for (const QString& path : paths) urls += QUrl::fromLocalFile(path);
        data->setUrls(urls);
        return data;
    }

    QTemporaryDir directory;
    std::unique_ptr<TLEImportSheet> sheet = std::make_unique<TLEImportSheet>(state, nullptr);
};

TEST_F(TLEImportSheetTest, SaysWhatItTakes) {
    EXPECT_EQ(sheet->minimumSize(), QSize(550, 500));
    EXPECT_EQ(sheet->windowTitle(), "Import TLE Data");
    QStringList texts;
    for (const auto* label : sheet->findChildren<ValueLabel*>()) texts += label->text();
    for (const char* told :
         {"Import TLE Data",
          "Paste TLE data below, or click 'Load File…' to open a .txt or .json file.",
          "Supports three-line TLE, two-line TLE, CelesTrak JSON, and SatNOGS JSON."}) {
        EXPECT_TRUE(texts.contains(told)) << told;
    }
    QStringList buttons;
    for (const auto* button : sheet->findChildren<QPushButton*>()) buttons += button->text();
    EXPECT_EQ(buttons, (QStringList{"Close", "Load File…", "Import from Text"}));
}

TEST_F(TLEImportSheetTest, BlanksLeaveTheImportDisabled) {
    EXPECT_FALSE(importButton().isEnabled());
    editor().setPlainText(" \t\n\n \u00A0\u2028 ");
    EXPECT_FALSE(importButton().isEnabled());
    editor().setPlainText("\n x");
    EXPECT_TRUE(importButton().isEnabled());
    editor().clear();
    EXPECT_FALSE(importButton().isEnabled());
}

TEST_F(TLEImportSheetTest, PastedSetJoinsTheSatellites) {
    EXPECT_FALSE(isShown(*sheet, "resultRow"));
    importPasted(kStation);
    EXPECT_EQ(result(), "Imported 1 satellite") << "one is singular";
    EXPECT_TRUE(isShown(*sheet, "successSymbol"));
    EXPECT_FALSE(isShown(*sheet, "failureSymbol"));
    EXPECT_EQ(editor().toPlainText(), "");
    EXPECT_TRUE(knows(25544));
    EXPECT_TRUE(sheet->isVisible()) << "several inputs can follow each other";
}

TEST_F(TLEImportSheetTest, AnyOtherCountIsPlural) {
    importPasted(QString(kStation) + kOther);
    EXPECT_EQ(result(), "Imported 2 satellites");
    importPasted(kStation);
    EXPECT_EQ(result(), "Imported 0 satellites") << "known already";
}

TEST_F(TLEImportSheetTest, FailureKeepsTheTextAndLoadsNothing) {
    importPasted("no elements");
    EXPECT_EQ(result(), "Error: No valid TLEs found in text");
    EXPECT_TRUE(isShown(*sheet, "failureSymbol"));
    EXPECT_FALSE(isShown(*sheet, "successSymbol"));
    EXPECT_EQ(editor().toPlainText(), "no elements");
    EXPECT_TRUE(importButton().isEnabled());
    machine.loop.runPosted();
    EXPECT_TRUE(state->satellites->empty());
    importPasted("{");
    EXPECT_EQ(result(), "Error: JSON could not be parsed");
    importPasted("[]");
    EXPECT_EQ(result(), "Error: JSON parsed but no TLEs found");
}

TEST_F(TLEImportSheetTest, ShowsThatItWorks) {
    editor().setPlainText(kStation);
    importButton().click();
    EXPECT_TRUE(isBusy());
    EXPECT_FALSE(importButton().isEnabled());
    EXPECT_FALSE(loadButton().isEnabled());
    EXPECT_TRUE(editor().isReadOnly());
    EXPECT_TRUE(child<QPushButton>(*sheet, "closeImport").isEnabled());
    ASSERT_TRUE(settle());
    EXPECT_TRUE(loadButton().isEnabled());
    EXPECT_FALSE(editor().isReadOnly());
    EXPECT_EQ(sheet->focusWidget(), &editor()) << "not the button that closes";
}

TEST_F(TLEImportSheetTest, ResultStaysUntilTheNext) {
    importPasted("no elements");
    editor().setPlainText(kStation);
    EXPECT_EQ(result(), "Error: No valid TLEs found in text");
    EXPECT_TRUE(isShown(*sheet, "resultRow"));
}

TEST_F(TLEImportSheetTest, FileIsImported) {
    editor().setPlainText("draft");
    sheet->importFiles({write("iss.tle", kStation)});
    EXPECT_TRUE(isBusy()) << "the window does not wait for the disk";
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Imported 1 satellite");
    EXPECT_EQ(editor().toPlainText(), "") << "a success empties the editor";
    EXPECT_TRUE(knows(25544));
}

TEST_F(TLEImportSheetTest, FileThatIsNoUtf8GivesTheReadFailure) {
    sheet->importFiles({write("latin.txt",
                              "M\xFC"
                              "NCHEN")});
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Failed to read file: latin.txt: not UTF-8 text");
    EXPECT_TRUE(isShown(*sheet, "failureSymbol"));
}

TEST_F(TLEImportSheetTest, FileWithoutElementsGivesTheImportsFailure) {
    sheet->importFiles({write("notes.txt", "nothing")});
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Error: No valid TLEs found in text");
}

TEST_F(TLEImportSheetTest, FileDialogImportsWhatIsChosen) {
    const QString path = write("iss.txt", kStation);
    loadButton().click();
    auto& dialog = child<QFileDialog>(*sheet, "selectTleFile");
    EXPECT_EQ(dialog.windowTitle(), "Select TLE file");
    EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
    emit dialog.filesSelected({path});
    dialog.close();
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Imported 1 satellite");
}

TEST_F(TLEImportSheetTest, FileDialogOffersAllFilesAndStartsAtHome) {
    loadButton().click();
    const auto& dialog = child<QFileDialog>(*sheet, "selectTleFile");
    EXPECT_EQ(dialog.nameFilters(),
              (QStringList{"Element text and JSON (*.txt *.tle *.json)", "All files (*)"}));
    EXPECT_EQ(dialog.directory().canonicalPath(), QDir::home().canonicalPath());
}

TEST_F(TLEImportSheetTest, CancellingTheFileDialogChangesNothing) {
    editor().setPlainText("draft");
    loadButton().click();
    child<QFileDialog>(*sheet, "selectTleFile").reject();
    EXPECT_FALSE(isBusy());
    EXPECT_FALSE(isShown(*sheet, "resultRow"));
    EXPECT_EQ(editor().toPlainText(), "draft");
    EXPECT_TRUE(loadButton().isEnabled());
}

TEST_F(TLEImportSheetTest, DroppedFilesAreReportedTogether) {
    const auto data =
        filesOf({write("a.txt", kStation), write("notes.txt", "nothing"), write("b.txt", kOther)});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(sheet.get(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(sheet.get(), &drop);
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Imported 2 satellites; Error: No valid TLEs found in text (notes.txt)");
    EXPECT_TRUE(isShown(*sheet, "failureSymbol"));
    EXPECT_TRUE(knows(25544));
    EXPECT_TRUE(knows(25545));
}

TEST_F(TLEImportSheetTest, FileOfImportsThatCouldNotBeReadIsToldOf) {
    const std::string unreadable = "M\xFCNCHEN\n";
    const auto spoil = [&] {
        machine.files.files["/home/test/.veloran/custom.tle"] = unreadable;
        machine.files.files.erase("/home/test/.veloran/custom.tle.unreadable");
    };
    constexpr const char* kTold =
        "; the earlier custom.tle could not be read and is kept as custom.tle.unreadable";
    spoil();
    importPasted(kStation);
    EXPECT_EQ(result(), QString("Imported 1 satellite") + kTold);
    EXPECT_EQ(machine.files.files["/home/test/.veloran/custom.tle.unreadable"], unreadable);
    spoil();
    sheet->importFiles({write("a.txt", kStation), write("b.txt", kOther)});
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), QString("Imported 2 satellites") + kTold);
}

TEST_F(TLEImportSheetTest, DropIsRefusedWithoutFilesAndWhileBusy) {
    QMimeData text;
    text.setText("words");
    QDragEnterEvent words({5, 5}, Qt::CopyAction, &text, Qt::LeftButton, {});
    QCoreApplication::sendEvent(sheet.get(), &words);
    EXPECT_FALSE(words.isAccepted());

    sheet->importFiles({write("a.txt", kStation)});
    const auto data = filesOf({write("b.txt", kOther)});
    QDragEnterEvent files({5, 5}, Qt::CopyAction, data.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(sheet.get(), &files);
    EXPECT_FALSE(files.isAccepted());
    sheet->importFiles({directory.filePath("b.txt")});
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Imported 1 satellite") << "of the first file alone";
}

TEST_F(TLEImportSheetTest, CopiedFileCanBePasted) {
    QGuiApplication::clipboard()->setMimeData(filesOf({write("a.txt", kStation)}).release());
    editor().paste();
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Imported 1 satellite");
}

TEST_F(TLEImportSheetTest, HugePastedTextIsImportedWithoutPassingTheEditor) {
    QGuiApplication::clipboard()->setText(QString("garbage\n").repeated(1'000'000) + kStation);
    editor().paste();
    EXPECT_EQ(editor().toPlainText(), "");
    EXPECT_TRUE(isBusy());
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Imported 1 satellite");
}

TEST_F(TLEImportSheetTest, EndlessLineDoesNotEnterTheEditor) {
    QGuiApplication::clipboard()->setText(QString("[") + QString("{},").repeated(100'000));
    editor().paste();
    EXPECT_EQ(editor().toPlainText(), "");
    ASSERT_TRUE(settle());
    EXPECT_EQ(result(), "Error: JSON could not be parsed");
}

TEST_F(TLEImportSheetTest, TextBeyondTheMeasureOfFilesIsRefused) {
    QGuiApplication::clipboard()->setText(
        QString(static_cast<qsizetype>(FileStore::kLargestFile) + 1, 'x'));
    editor().paste();
    EXPECT_FALSE(isBusy());
    EXPECT_EQ(result(), "Error: The text is larger than 64 MB");
    QGuiApplication::clipboard()->clear();
}

/// The editor holds the text; pasting it once more leaves it as it is.
void expectRoomForOne(QPlainTextEdit& editor, const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    editor.paste();
    const int held = editor.document()->characterCount();
    EXPECT_EQ(held, text.size() + 1);
    editor.moveCursor(QTextCursor::End);
    editor.paste();
    EXPECT_EQ(editor.document()->characterCount(), held);
    QGuiApplication::clipboard()->clear();
}

TEST_F(TLEImportSheetTest, EditorFullOfTextTakesNoMore) {
    const QString line = QString(999, 'x') + '\n';
    const QString text = line.repeated(ElementEditor::kMostText * 2 / 3 / line.size());
    expectRoomForOne(editor(), text);
    ASSERT_TRUE(settle());
    EXPECT_EQ(editor().toPlainText(), text) << "the failure keeps the text";
}

TEST_F(TLEImportSheetTest, EditorFullOfLinesTakesNoMore) {
    expectRoomForOne(editor(), QString("x\n").repeated(ElementEditor::kMostLines * 2 / 3));
    ASSERT_TRUE(settle());
}

TEST_F(TLEImportSheetTest, ClosingMeanwhileStopsNothing) {
    sheet->importFiles({write("a.txt", kStation)});
    sheet.reset();
    EXPECT_TRUE(settle([this] { return knows(25544); }));
}

TEST_F(TLEImportSheetTest, EndOfTheStateMeanwhileIsHarmless) {
    sheet->importFiles({write("a.txt", kStation)});
    sheet.reset();
    state.reset();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
    machine.loop.runPosted();
    EXPECT_FALSE(machine.files.files.contains("/home/test/.veloran/custom.tle"));
}

TEST_F(TLEImportSheetTest, ExampleCanBeSelectedAndIsReadable) {
    auto& example = child<QLabel>(*sheet, "exampleText");
    EXPECT_FALSE(example.isVisible());
    EXPECT_TRUE(example.textInteractionFlags() & Qt::TextSelectableByMouse);
    importPasted(example.text());
    EXPECT_EQ(result(), "Imported 1 satellite");
}

TEST_F(TLEImportSheetTest, CloseButtonAndEscapeDismissIt) {
    child<QPushButton>(*sheet, "closeImport").click();
    EXPECT_FALSE(sheet->isVisible());
    sheet->present();
    QTest::keyClick(&editor(), Qt::Key_Escape);
    EXPECT_FALSE(sheet->isVisible());
}

}  // namespace
}  // namespace veloran::test
