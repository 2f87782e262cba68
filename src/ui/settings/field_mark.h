#pragma once

#include <QObject>
#include <functional>
#include <string_view>

class QLineEdit;

namespace veloran {

class ValueLabel;

/// The mark of a field whose text cannot be taken: a red frame, and why, as tooltip, as spoken
/// description and in small letters. Lives as long as the field.
class FieldMark : public QObject {
    Q_OBJECT
  public:
    explicit FieldMark(QLineEdit& field);

    /// An empty text takes the mark away.
    void show(const QString& why);
    /// The small letters, to be placed near the field.
    ValueLabel* note() const { return note_; }

  private:
    QLineEdit& field_;
    ValueLabel* note_;
};

/// Marks the field for as long as its text does not read. Gives the small letters.
ValueLabel* markUnread(QLineEdit& field, std::function<bool(std::string_view)> reads,
                       const QString& expected);

}  // namespace veloran
