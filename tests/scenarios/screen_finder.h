#pragma once

#include <QSocketNotifier>
#include <QString>

namespace veloran::test {

/// Tells a driver of the program, which works it with keyboard and pointer alone, where things are
/// on the screen and what stands there. A line on standard input asks, one on standard output
/// answers:
///
///     where NAME       "X Y" of the middle of the widget of that object name, on the screen;
///                      "hidden" when it is there but out of sight; "absent"
///     edge NAME        "X Y WIDTH HEIGHT" of the widget
///     frame NAME       the same of a window with what the desktop draws around it
///     text NAME        what the widget reads; "absent"
///     row VIEW TEXT    "X Y" of the middle of the first row that begins with the text; "absent"
///     current VIEW     the text of the row that the keyboard is on
///     focus            the object name of the widget that has the keyboard
///     picture FILE     writes a picture of the screen: "done"
///
/// NAME may be a path, "customSources>disclosureHeading"; windows are searched from the top one.
class ScreenFinder : public QObject {
  public:
    ScreenFinder();

  private:
    void read();

    QSocketNotifier input_;
    QByteArray unread_;
};

/// The answer to one question.
QString screenAnswer(const QString& question);

}  // namespace veloran::test
