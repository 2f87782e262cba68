#include "ui/import/element_editor.h"

#include <QMimeData>
#include <QTextBlock>

#include "base/text.h"
#include "ui/import/local_files.h"
#include "ui/theme.h"

namespace veloran {

namespace {

struct Lines {
    qsizetype count = 0;
    qsizetype longest = 0;
};

Lines linesOf(const QString& text) {
    Lines lines;
    qsizetype begin = 0;
    while (begin <= text.size()) {
        const qsizetype found = text.indexOf('\n', begin);
        const qsizetype end = found < 0 ? text.size() : found;
        lines.longest = std::max(lines.longest, end - begin);
        ++lines.count;
        begin = end + 1;
    }
    return lines;
}

}  // namespace

ElementEditor::ElementEditor(QWidget* parent) : QPlainTextEdit(parent) {
    setFrameShape(QFrame::NoFrame);
    setFont(Theme::mono(11));
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
}

bool ElementEditor::hasText() const {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const std::string line = block.text().toStdString();
        if (!trimmed(line, Blanks::withNewlines).empty()) return true;
    }
    return false;
}

bool ElementEditor::canInsertFromMimeData(const QMimeData* source) const {
    return !localFiles(*source).isEmpty() || QPlainTextEdit::canInsertFromMimeData(source);
}

void ElementEditor::insertFromMimeData(const QMimeData* source) {
    const QStringList files = localFiles(*source);
    if (!files.isEmpty()) {
        emit filesGiven(files);
        return;
    }
    const QString text = source->text();
    if (hasRoomFor(text)) {
        QPlainTextEdit::insertFromMimeData(source);
    } else {
        emit largeTextGiven(text);
    }
}

bool ElementEditor::hasRoomFor(const QString& text) const {
    if (text.size() > kMostText - document()->characterCount()) return false;
    const Lines lines = linesOf(text);
    return lines.longest <= kLongestLine && lines.count <= kMostLines - document()->blockCount();
}

}  // namespace veloran
