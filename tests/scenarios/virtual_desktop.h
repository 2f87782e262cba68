#pragma once

#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

namespace veloran::test {

/// A screen of its own with a window manager, on which programs are worked by the X server's own
/// keyboard and pointer.
class VirtualDesktop {
  public:
    /// Starts the screen and the window manager; isUp() is false when that cannot be had.
    explicit VirtualDesktop(QSize size);
    ~VirtualDesktop();

    bool isUp() const { return !display_.isEmpty(); }
    /// The D-Bus of programs here, session's and system's in one; without this they have none.
    void useBus(const QString& address) { bus_ = address; }
    /// What a program needs to open its windows here.
    QProcessEnvironment environment() const;

    void click(QPoint at);
    /// One step of the wheel towards the end of what lies there.
    void wheelDown(QPoint at);
    /// Presses a key by its X name: "Return", "ctrl+b".
    void press(const QString& key);
    void type(const QString& text);

  private:
    void act(const QStringList& arguments);

    QTemporaryDir directory_;
    QProcess server_;
    QProcess manager_;
    QString display_;
    QString bus_ = "unix:path=/nonexistent";
};

/// A program on a virtual desktop, worked as a user would; see ScreenFinder for the names. Each
/// action waits until what it needs is there; what does not come in a minute fails the test.
class DrivenProgram {
  public:
    /// Pictures of the screen go to `pictures`; one more when something is not found.
    DrivenProgram(VirtualDesktop& desktop, const QString& program, const QStringList& arguments,
                  QString pictures);
    ~DrivenProgram();

    void click(const QString& name);
    /// Clicks a part of a widget: `share` of its width and height, 0 to 1.
    void clickAt(const QString& name, double shareX, double shareY);
    void clickRow(const QString& view, const QString& text);
    /// Puts the text in the place of what a field holds.
    void fill(const QString& name, const QString& text);
    void press(const QString& key) { desktop_.press(key); }
    void type(const QString& text) { desktop_.type(text); }

    QString text(const QString& name) { return ask("text " + name); }
    /// Where a widget lies on the screen, and a window with its frame; empty for what is not there.
    QRect edge(const QString& name) { return rectOf("edge " + name); }
    QRect frame(const QString& window) { return rectOf("frame " + window); }
    bool isInSight(const QString& name) { return ask("where " + name).contains(' '); }
    QString current(const QString& view) { return ask("current " + view); }
    bool isThere(const QString& name) { return ask("where " + name) != "absent"; }
    bool waitFor(const QString& name, bool there = true);
    bool waitForText(const QString& name, const QString& wanted);
    bool waitForFocus(const QString& name);
    void picture(const QString& name);
    /// As a session does that ends.
    void terminate() { process_.terminate(); }
    void kill() { process_.kill(); }
    /// Waits for the end of the program and gives its exit code; -1 for a crash.
    int ended();

  private:
    QString ask(const QString& question);
    QPoint placeOf(const QString& question);
    QRect rectOf(const QString& question);

    [[noreturn]] void giveUp(const QString& what);

    VirtualDesktop& desktop_;
    const QString pictures_;
    QProcess process_;
};

}  // namespace veloran::test
