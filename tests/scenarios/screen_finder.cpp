#include "scenarios/screen_finder.h"

#include <unistd.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QScreen>
#include <array>
#include <cstdio>

#include "ui/widgets/value_label.h"

namespace veloran::test {

namespace {

const QString kAbsent = "absent";

/// The window that is modal, else the active one, else any.
QWidgetList windowsFromTheTop() {
    QWidgetList windows = QApplication::topLevelWidgets();
    windows.removeIf([](const QWidget* window) { return !window->isVisible(); });
    for (QWidget* top : {QApplication::activeWindow(), QApplication::activeModalWidget()}) {
        if (top != nullptr && windows.removeOne(top)) windows.prepend(top);
    }
    return windows;
}

QWidget* inside(QWidget* root, const QStringList& path) {
    for (const QString& name : path) {
        if (root == nullptr) return nullptr;
        if (root->objectName() != name) root = root->findChild<QWidget*>(name);
    }
    return root;
}

QWidget* find(const QString& name) {
    for (QWidget* window : windowsFromTheTop()) {
        QWidget* found = inside(window, name.split('>'));
        if (found != nullptr && found->isVisible()) return found;
    }
    return nullptr;
}

QString pointText(const QPoint& point) {
    return QString("%1 %2").arg(point.x()).arg(point.y());
}

QString where(const QString& name) {
    const QWidget* widget = find(name);
    if (widget == nullptr) return kAbsent;
    const QPoint middle = widget->mapToGlobal(widget->rect().center());
    const QWidget* onTop = QApplication::widgetAt(middle);
    const bool isSeen = onTop == widget || widget->isAncestorOf(onTop);
    return isSeen ? pointText(middle) : "hidden";
}

QString rectText(const QRect& rect) {
    return pointText(rect.topLeft()) + QString(" %1 %2").arg(rect.width()).arg(rect.height());
}

QString edge(const QString& name) {
    const QWidget* widget = find(name);
    if (widget == nullptr) return kAbsent;
    return rectText({widget->mapToGlobal(QPoint()), widget->size()});
}

QString frame(const QString& name) {
    const QWidget* widget = find(name);
    return widget == nullptr ? kAbsent : rectText(widget->frameGeometry());
}

QString text(const QString& name) {
    QWidget* widget = find(name);
    if (widget == nullptr) return kAbsent;
    if (const auto* label = qobject_cast<ValueLabel*>(widget)) return label->text();
    if (const auto* line = qobject_cast<QLineEdit*>(widget)) return line->text();
    if (const auto* button = qobject_cast<QAbstractButton*>(widget)) {
        if (button->isCheckable()) return button->isChecked() ? "on" : "off";
        return button->text();
    }
    const QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(widget);
    return spoken != nullptr ? spoken->text(QAccessible::Name) : QString();
}

QString row(const QString& viewName, const QString& wanted) {
    const auto* view = qobject_cast<QAbstractItemView*>(find(viewName));
    if (view == nullptr) return kAbsent;
    const auto found = view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, wanted, 1,
                                            Qt::MatchStartsWith | Qt::MatchRecursive);
    if (found.isEmpty()) return kAbsent;
    const QRect place = view->visualRect(found.front());
    if (!view->viewport()->rect().contains(place.center())) return "hidden";
    return pointText(view->viewport()->mapToGlobal(place.center()));
}

QString current(const QString& viewName) {
    const auto* view = qobject_cast<QAbstractItemView*>(find(viewName));
    return view != nullptr ? view->currentIndex().data().toString() : kAbsent;
}

QString focus() {
    const QWidget* widget = QApplication::focusWidget();
    return widget != nullptr ? widget->objectName() : kAbsent;
}

QString picture(const QString& file) {
    return QGuiApplication::primaryScreen()->grabWindow(0).save(file) ? "done" : "failed";
}

}  // namespace

QString screenAnswer(const QString& question) {
    const QString word = question.section(' ', 0, 0);
    const QString rest = question.section(' ', 1);
    if (word == "where") return where(rest);
    if (word == "edge") return edge(rest);
    if (word == "frame") return frame(rest);
    if (word == "text") return text(rest);
    if (word == "row") return row(rest.section(' ', 0, 0), rest.section(' ', 1));
    if (word == "current") return current(rest);
    if (word == "focus") return focus();
    if (word == "picture") return picture(rest);
    return "unknown question";
}

ScreenFinder::ScreenFinder() : input_(STDIN_FILENO, QSocketNotifier::Read) {
    connect(&input_, &QSocketNotifier::activated, this, &ScreenFinder::read);
}

void ScreenFinder::read() {
    std::array<char, 4096> bytes{};
    const auto count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) return input_.setEnabled(false);
    unread_.append(bytes.data(), count);
    for (qsizetype end = unread_.indexOf('\n'); end >= 0; end = unread_.indexOf('\n')) {
        const QString answer = screenAnswer(QString::fromUtf8(unread_.first(end)));
        unread_.remove(0, end + 1);
        std::puts(answer.toUtf8().constData());
    }
    std::fflush(stdout);
}

}  // namespace veloran::test
