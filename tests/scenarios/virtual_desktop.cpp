#include "scenarios/virtual_desktop.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QRegularExpression>
#include <stdexcept>

#include "scenarios/real_station.h"

namespace veloran::test {

namespace {

constexpr double kPatience = 60;  // seconds
constexpr int kPatienceMs = static_cast<int>(1000 * kPatience);

/// Lets the servers of this process live while a child is waited for.
bool waitForLine(QProcess& process) {
    return spinUntil(
               [&] { return process.canReadLine() || process.state() == QProcess::NotRunning; },
               kPatience) &&
           process.canReadLine();
}

std::optional<QPoint> pointOf(const QString& answer) {
    static const QRegularExpression form("^(-?\\d+) (-?\\d+)");
    const auto match = form.match(answer);
    if (!match.hasMatch()) return std::nullopt;
    return QPoint(match.captured(1).toInt(), match.captured(2).toInt());
}

}  // namespace

VirtualDesktop::VirtualDesktop(QSize size) {
    // Without "-r" a key repeats itself when the machine is so busy that its release comes late.
    server_.start("Xvfb",
                  {"-displayfd", "1", "-r", "-screen", "0",
                   QString("%1x%2x24").arg(size.width()).arg(size.height()), "-nolisten", "tcp"});
    if (!waitForLine(server_)) return;
    display_ = ":" + QString::fromLatin1(server_.readLine()).trimmed();
    manager_.setProcessEnvironment(environment());
    // A window that comes while the manager takes over the screen may stay unseen.
    const QString ready = directory_.filePath("manager-is-ready");
    manager_.start("openbox", {"--sm-disable", "--startup", "touch " + ready});
    if (!spinUntil([&] { return QFile::exists(ready); }, kPatience)) display_.clear();
}

VirtualDesktop::~VirtualDesktop() {
    for (QProcess* process : {&manager_, &server_}) {
        if (process->state() == QProcess::NotRunning) continue;
        process->terminate();
        process->waitForFinished(kPatienceMs);
    }
}

QProcessEnvironment VirtualDesktop::environment() const {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", display_);
    environment.insert("HOME", directory_.path());
    environment.insert("QT_QPA_PLATFORM", "xcb");
    environment.insert("XDG_RUNTIME_DIR", directory_.path());
    environment.insert("DBUS_SESSION_BUS_ADDRESS", bus_);
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", bus_);
    environment.remove("WAYLAND_DISPLAY");
    return environment;
}

void VirtualDesktop::act(const QStringList& arguments) {
    QProcess hand;
    hand.setProcessEnvironment(environment());
    hand.start("xdotool", arguments);
    ASSERT_TRUE(spinUntil([&] { return hand.state() == QProcess::NotRunning; }));
    ASSERT_EQ(hand.exitCode(), 0) << arguments.join(' ').toStdString() << ": "
                                  << hand.readAllStandardError().toStdString();
}

void VirtualDesktop::click(QPoint at) {
    act({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "1"});
}

void VirtualDesktop::wheelDown(QPoint at) {
    act({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "5"});
}

void VirtualDesktop::press(const QString& key) {
    act({"key", key});
}

void VirtualDesktop::type(const QString& text) {
    const QStringList lines = text.split('\n');
    for (const QString& line : lines) {
        if (&line != &lines.front()) press("Return");
        if (!line.isEmpty()) act({"type", "--delay", "2", line});
    }
}

DrivenProgram::DrivenProgram(VirtualDesktop& desktop, const QString& program,
                             const QStringList& arguments, QString pictures)
    : desktop_(desktop), pictures_(std::move(pictures)) {
    process_.setProcessEnvironment(desktop.environment());
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(program, arguments);
}

DrivenProgram::~DrivenProgram() {
    if (process_.state() == QProcess::NotRunning) return;
    process_.kill();
    process_.waitForFinished(kPatienceMs);
}

QString DrivenProgram::ask(const QString& question) {
    process_.write((question + "\n").toUtf8());
    if (!waitForLine(process_)) throw std::runtime_error("no answer: " + question.toStdString());
    return QString::fromUtf8(process_.readLine()).trimmed();
}

QPoint DrivenProgram::placeOf(const QString& question) {
    std::optional<QPoint> point;
    const bool found = spinUntil(
        [&] {
            const QString answer = ask(question);
            point = pointOf(answer);
            // What lies further down in the settings is scrolled to.
            if (answer == "hidden") {
                if (const auto form = pointOf(ask("where settingsForm"))) desktop_.wheelDown(*form);
            }
            return point.has_value();
        },
        kPatience);
    if (!found) giveUp(question);
    return *point;
}

QRect DrivenProgram::rectOf(const QString& question) {
    const QStringList numbers = ask(question).split(' ');
    if (numbers.size() != 4) return {};
    return {numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt()};
}

void DrivenProgram::click(const QString& name) {
    desktop_.click(placeOf("where " + name));
}

void DrivenProgram::clickAt(const QString& name, double shareX, double shareY) {
    const QRect place = edge(name);
    if (place.isEmpty()) giveUp(name);
    desktop_.click({place.x() + static_cast<int>(shareX * place.width()),
                    place.y() + static_cast<int>(shareY * place.height())});
}

void DrivenProgram::clickRow(const QString& view, const QString& text) {
    desktop_.click(placeOf("row " + view + ' ' + text));
}

void DrivenProgram::fill(const QString& name, const QString& text) {
    click(name);
    press("ctrl+a");
    type(text);
}

bool DrivenProgram::waitFor(const QString& name, bool there) {
    return spinUntil([&] { return isThere(name) == there; }, kPatience);
}

bool DrivenProgram::waitForText(const QString& name, const QString& wanted) {
    const QRegularExpression form(QRegularExpression::anchoredPattern(wanted));
    const bool came = spinUntil([&] { return form.match(text(name)).hasMatch(); }, kPatience);
    if (!came) ADD_FAILURE() << name.toStdString() << " reads " << text(name).toStdString();
    return came;
}

bool DrivenProgram::waitForFocus(const QString& name) {
    return spinUntil([&] { return ask("focus") == name; }, kPatience);
}

void DrivenProgram::picture(const QString& name) {
    EXPECT_EQ(ask("picture " + pictures_ + '/' + name + ".png"), "done");
}

void DrivenProgram::giveUp(const QString& what) {
    picture("not-found");
    throw std::runtime_error("not found: " + what.toStdString());
}

int DrivenProgram::ended() {
    const bool isOver =
        spinUntil([&] { return process_.state() == QProcess::NotRunning; }, kPatience);
    return isOver && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

}  // namespace veloran::test
