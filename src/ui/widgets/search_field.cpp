#include "ui/widgets/search_field.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>

#include "ui/theme.h"
#include "ui/widgets/one_line.h"
#include "ui/widgets/symbol_button.h"
#include "ui/widgets/symbol_view.h"

namespace veloran {

namespace {

constexpr int kCornerRadius = 6;

}  // namespace

SearchField::SearchField(const QString& placeholder, QWidget* parent)
    : QWidget(parent),
      line_(new QLineEdit),
      clear_(new SymbolButton(Symbol::crossDisc, 10, tr("Clear the search"), Ink::secondary)) {
    line_->setObjectName("searchText");
    line_->setPlaceholderText(placeholder);
    line_->setAccessibleName(tr("Search"));
    line_->setFrame(false);
    keepToOneLine(*line_);
    line_->setFont(Theme::face(12));
    clear_->setObjectName("clearSearch");
    clear_->hide();
    setFocusProxy(line_);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(6, 4, 6, 4);
    row->setSpacing(4);
    row->addWidget(new SymbolView(Symbol::search, 11, Ink::secondary));
    row->addWidget(line_, 1);
    row->addWidget(clear_);
    // The field keeps its height when the button comes and goes.
    setFixedHeight(std::max(line_->sizeHint().height(), clear_->sizeHint().height()) + 8);

    connect(line_, &QLineEdit::textChanged, this, [this](const QString& text) {
        clear_->setVisible(!text.isEmpty());
        emit textChanged(text);
    });
    connect(clear_, &SymbolButton::clicked, this, &SearchField::clear);
    line_->installEventFilter(this);
}

QString SearchField::text() const {
    return line_->text();
}

void SearchField::clear() {
    line_->clear();
    line_->setFocus();
}

void SearchField::type(QKeyEvent& event) {
    line_->setFocus();
    line_->end(false);
    QCoreApplication::sendEvent(line_, &event);
}

bool SearchField::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter) {
            emit left();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void SearchField::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool active = line_->hasFocus();
    painter.setPen(QPen(Theme::color(active ? Ink::blue : Ink::separator), 1));
    painter.setBrush(Theme::color(Ink::control));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCornerRadius,
                            kCornerRadius);
}

}  // namespace veloran
