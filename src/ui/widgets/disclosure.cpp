#include "ui/widgets/disclosure.h"

#include <QHBoxLayout>
#include <QStyleOptionToolButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/symbol_icon.h"
#include "ui/theme.h"
#include "ui/widgets/value_label.h"

namespace veloran {

namespace {

constexpr int kIndent = 18;

/// Open or not, it is no pressed button.
class Heading final : public QToolButton {
  protected:
    void initStyleOption(QStyleOptionToolButton* option) const override {
        QToolButton::initStyleOption(option);
        if (!isChecked() || isDown()) return;
        option->state.setFlag(QStyle::State_On, false);
        option->state.setFlag(QStyle::State_Raised);
    }
};

}  // namespace

Disclosure::Disclosure(const QString& heading, int pixels, QWidget* content, QWidget* parent)
    : QWidget(parent),
      heading_(new Heading),
      detail_(new ValueLabel({10, QFont::Normal, Ink::secondary, 1, false})),
      content_(content) {
    heading_->setObjectName("disclosureHeading");
    heading_->setCheckable(true);
    heading_->setAutoRaise(true);
    heading_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    heading_->setIconSize({10, 10});
    heading_->setFont(Theme::face(pixels));
    heading_->setFocusPolicy(Qt::StrongFocus);
    setHeading(heading);

    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(heading_);
    row->addStretch();
    row->addWidget(detail_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addLayout(row);
    auto* indented = new QHBoxLayout;
    indented->setContentsMargins(kIndent, 0, 0, 0);
    indented->addWidget(content_);
    column->addLayout(indented);

    connect(heading_, &QToolButton::toggled, this, &Disclosure::setOpen);
    setOpen(false);
}

void Disclosure::setHeading(const QString& heading) {
    // An ampersand would mark a key.
    heading_->setText(QString(heading).replace('&', "&&"));
    heading_->setAccessibleName(heading);
}

void Disclosure::setDetail(const QString& detail) {
    detail_->setText(detail);
    heading_->setAccessibleDescription(detail);
}

QString Disclosure::detail() const {
    return detail_->text();
}

bool Disclosure::isOpen() const {
    return heading_->isChecked();
}

void Disclosure::setOpen(bool open) {
    heading_->setChecked(open);
    heading_->setIcon(
        symbolIcon(open ? Symbol::chevronDown : Symbol::chevronRight, Ink::secondary));
    content_->setVisible(open);
    if (open) emit opened();
}

}  // namespace veloran
