#pragma once

#include <QWidget>

class QToolButton;

namespace veloran {

/// A heading that opens and closes what stands below it; closed at first.
class Disclosure : public QWidget {
    Q_OBJECT
  public:
    /// `pixels`: size of the heading's text. Takes `content` over.
    Disclosure(const QString& heading, int pixels, QWidget* content, QWidget* parent = nullptr);

    void setHeading(const QString& heading);
    /// A short text at the right end of the heading; empty for none.
    void setDetail(const QString& detail);
    QString detail() const;
    bool isOpen() const;
    void setOpen(bool open);

  signals:
    void opened();

  private:
    QToolButton* heading_;
    class ValueLabel* detail_;
    QWidget* content_;
};

}  // namespace veloran
