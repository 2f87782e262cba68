#pragma once

#include <QByteArray>
#include <QLocalServer>
#include <QObject>
#include <QString>

namespace veloran {

/// One program of a name for each user. The first one holds a lock for as long as it lives, which
/// the system gives back however it dies, and listens on a socket beside it; each later one calls
/// it forward there. Both stand in `directory`; where it takes no files everybody is the first.
class SingleInstance final : public QObject {
    Q_OBJECT

  public:
    enum class Role {
        first,      ///< goes on, and hears of later ones
        second,     ///< has called the first one forward
        unanswered  ///< there is a first one, and it has not answered in `patienceMs`
    };
    static constexpr int kPatienceMs = 10'000;

    explicit SingleInstance(const QString& name, const QString& directory = runtimeDirectory(),
                            int patienceMs = kPatienceMs);
    /// The last to go: what comes after it finds settings and radio free.
    ~SingleInstance() override;

    Role role() const { return role_; }
    static QString runtimeDirectory();

  Q_SIGNALS:
    /// A later one calls. The token, which may be empty, is its leave to take the keyboard.
    void called(const QByteArray& activationToken);

  private:
    bool lock(const QString& file);
    void listen();
    void answer(QLocalSocket& caller);
    bool call() const;

    const QString socket_;
    int lock_ = -1;
    QLocalServer server_;
    Role role_ = Role::first;
};

}  // namespace veloran
