#pragma once

#include <QWidget>
#include <optional>
#include <string_view>

#include "ui/q_text.h"
#include "ui/widgets/fitted_text.h"
#include "ui/widgets/text_style.h"

namespace veloran {

/// One line of text that may change many times a second: an equal text costs nothing, another one
/// repaints this label and lays nothing out anew as long as it fits the reserved width. A text
/// wider than the label is drawn smaller, then cut with "…", and the tooltip then tells all of it.
class ValueLabel : public QWidget {
    Q_OBJECT
  public:
    /// Smallest size a text is shrunk to before it is cut.
    static constexpr int kSmallestPixels = 9;

    explicit ValueLabel(const TextStyle& style, const QString& text = {},
                        QWidget* parent = nullptr);

    const QString& text() const { return text_; }
    void setText(const QString& text);
    void setText(std::string_view utf8) { setText(qText(utf8)); }
    const TextStyle& textStyle() const { return style_; }
    void setTextStyle(const TextStyle& style);

    /// Keeps room for `sample` at least.
    void reserve(const QString& sample);
    /// Exactly `width` where there is room, down to `least` where there is not.
    void setWidthRange(int least, int width);
    /// May become as narrow as the layout needs.
    void setElastic();
    void setAlignment(Qt::Alignment horizontal);
    /// Where a text that does not fit is cut; at its end unless told.
    void setElideMode(Qt::TextElideMode mode) { cutAt_ = mode; }
    /// Draws on the baseline of a larger text beside it, and takes its height.
    void alignToFirstBaselineOf(const QFont& larger);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    bool isCut() const;
    FittedText fitted() const;
    int widthOf(const QString& text) const;

    TextStyle style_;
    QString text_;
    int textWidth_ = 0;
    std::optional<int> reserved_;
    bool fixedHint_ = false;
    bool elastic_ = false;
    Qt::Alignment alignment_ = Qt::AlignLeft;
    Qt::TextElideMode cutAt_ = Qt::ElideRight;
    std::optional<QFont> baselineFont_;
};

}  // namespace veloran
