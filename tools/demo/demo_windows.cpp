#include "demo/demo_windows.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTimer>

#include "ui/theme.h"

namespace veloran {
namespace {

template <class Widget>
Widget& named(QWidget& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(name);
    if (found == nullptr) qFatal("there is no %s", name);
    return *found;
}

QWidget* openBrowserWindow() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "satelliteBrowser" && window->isVisible()) return window;
    }
    return nullptr;
}

QWidget& openBrowser(MainWindow& window) {
    window.openBrowser();
    return *openBrowserWindow();
}

void press(QWidget& widget, Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

void openDetails(QWidget& browser, const Satellite& satellite) {
    named<QLineEdit>(browser, "searchText").setText(QString::number(satellite.id));
    auto& found = named<QAbstractItemView>(browser, "availableSatellites");
    found.setCurrentIndex(found.model()->index(0, 0, found.model()->index(0, 0)));
    press(found, Qt::Key_Return);
}

void openImport(QWidget& browser, const std::string& text) {
    named<QAbstractButton>(browser, "importTLE").click();
    named<QPlainTextEdit>(browser, "pasteText").setPlainText(QString::fromStdString(text));
}

}  // namespace

void openWindow(DemoShow show, MainWindow& window, AppState& state, const LocalStation& station) {
    switch (show) {
        case DemoShow::nothing:
        case DemoShow::pass:
        case DemoShow::tracking:
        case DemoShow::conflict:
            return;
        case DemoShow::browser:
            openBrowser(window);
            return;
        case DemoShow::details:
            if (const auto& pass = state.selectedPass.get()) {
                openDetails(openBrowser(window), *pass->satellite);
            }
            return;
        case DemoShow::list:
            state.showSatelliteList = true;
            return;
        case DemoShow::importing:
            openImport(openBrowser(window), station.importText());
            return;
        case DemoShow::settings:
            state.showSettings = true;
            return;
    }
}

void keepResizing(QWidget& window) {
    constexpr int kFrameMilliseconds = 16;
    constexpr int kStep = 4;    // pixels
    constexpr int kSteps = 50;  // in one direction
    auto* timer = new QTimer(&window);
    QObject::connect(timer, &QTimer::timeout, &window, [&window, step = 0]() mutable {
        const int change = step++ % (2 * kSteps) < kSteps ? kStep : -kStep;
        window.resize(window.width() + change, window.height() + change);
    });
    timer->start(kFrameMilliseconds);
}

QPixmap picture(MainWindow& window, const QString& part) {
    if (!part.isEmpty()) {
        auto* widget = window.findChild<QWidget*>(part);
        return widget == nullptr ? QPixmap() : widget->grab();
    }
    QWidget* browser = openBrowserWindow();
    QWidget& below = browser == nullptr ? window : *browser;
    QPixmap result = below.grab();
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr) return result;
    const QRect place(dialog->mapToGlobal(QPoint()) - below.mapToGlobal(QPoint()), dialog->size());
    QPainter painter(&result);
    painter.drawPixmap(place.topLeft(), dialog->grab());
    painter.setPen(Theme::color(Ink::separator));
    painter.drawRect(place);
    return result;
}

}  // namespace veloran
