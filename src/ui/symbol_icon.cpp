#include "ui/symbol_icon.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QSvgRenderer>
#include <array>

#include "ui/theme.h"

// The pictures are compiled into a static library, where nothing else makes the linker keep them.
static void keepResources() {
    Q_INIT_RESOURCE(veloran_ui);
}

namespace veloran {

namespace {

QByteArray readSymbol(const char* name) {
    QFile file(QString(":/veloran/symbols/%1.svg").arg(QLatin1String(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray symbolSvg(Symbol symbol) {
    static constexpr auto names = std::to_array<const char*>({"arrow-clockwise",
                                                              "arrow-up-and-down",
                                                              "play",
                                                              "stop",
                                                              "grid",
                                                              "satellite",
                                                              "gear",
                                                              "chevron-down",
                                                              "chevron-right",
                                                              "chevron-down-disc",
                                                              "chevron-right-disc",
                                                              "location",
                                                              "zoom-in",
                                                              "zoom-out",
                                                              "plus-square",
                                                              "cross-disc",
                                                              "check-disc",
                                                              "arrow-up-right",
                                                              "arrow-left-and-right",
                                                              "arrow-up",
                                                              "arrow-down",
                                                              "antenna",
                                                              "pin",
                                                              "search",
                                                              "import-tray",
                                                              "info",
                                                              "trash"});
    static std::array<QByteArray, names.size()> read;
    const auto index = static_cast<std::size_t>(symbol);
    keepResources();
    if (read[index].isEmpty()) read[index] = readSymbol(names[index]);
    return read[index];
}

class SymbolIconEngine final : public QIconEngine {
  public:
    SymbolIconEngine(Symbol symbol, Ink ink) : symbol_(symbol), ink_(ink) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const bool disabled = mode == QIcon::Disabled;
        paintSymbol(*painter, rect, symbol_,
                    blended(Theme::color(disabled ? Ink::secondary : ink_, disabled ? 0.55 : 1),
                            Theme::color(Ink::window)));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new SymbolIconEngine(*this); }

  private:
    Symbol symbol_;
    Ink ink_;
};

}  // namespace

void paintSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, const QColor& color) {
    QSvgRenderer renderer(symbolSvg(symbol).replace("currentColor", color.name().toLatin1()));
    const qreal opacity = painter.opacity();
    painter.setOpacity(opacity * color.alphaF());
    renderer.render(&painter, rect);
    painter.setOpacity(opacity);
}

QIcon symbolIcon(Symbol symbol, Ink ink) {
    return QIcon(new SymbolIconEngine(symbol, ink));
}

QIcon applicationIcon() {
    keepResources();
    return QIcon(":/veloran/veloran.svg");
}

}  // namespace veloran
