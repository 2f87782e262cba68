#pragma once

#include <QPlainTextEdit>

namespace veloran {

/// The editor for pasted elements. What it is given beyond its measure never becomes part of it: a
/// text of tens of megabytes would hold up the window.
class ElementEditor : public QPlainTextEdit {
    Q_OBJECT
  public:
    /// Characters and lines that the editor holds, enough for a whole catalogue, and the characters
    /// of one line, which is laid out as a whole.
    static constexpr qsizetype kMostText = 2'500'000;
    static constexpr qsizetype kMostLines = 40'000;
    static constexpr qsizetype kLongestLine = 20'000;

    explicit ElementEditor(QWidget* parent = nullptr);

    /// Whether it holds anything but white space and line ends.
    bool hasText() const;

  signals:
    /// Files were dropped on it or pasted.
    void filesGiven(const QStringList& paths);
    /// A text too large for it was dropped on it or pasted.
    void largeTextGiven(const QString& text);

  protected:
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    bool hasRoomFor(const QString& text) const;
};

}  // namespace veloran
