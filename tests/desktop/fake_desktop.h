#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>
#include <memory>
#include <vector>

namespace veloran::test {

/// Base of the services: each owns its well-known name on a connection while it is `serve`d.
class FakeService : public QDBusVirtualObject {
  public:
    FakeService(QDBusConnection bus, QString name, QString path);
    ~FakeService() override;

    /// Takes the name, or gives it up as a service does that ends.
    void serve();
    void vanish();

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& connection) override;

  protected:
    /// The answer to a call of the service; an error message refuses it.
    virtual QDBusMessage answer(const QDBusMessage& call) = 0;

    QDBusConnection bus_;

  private:
    const QString name_;
    const QString path_;
};

/// The portal's Inhibit interface.
class FakePortal final : public FakeService {
  public:
    explicit FakePortal(QDBusConnection bus);

    /// Says about the latest request what came of it: 0 is good.
    void respond(uint code);

    bool refuses = false;
    std::vector<uint> flags;  ///< of each request so far
    QStringList reasons;      ///< of each request so far
    QStringList heldBefore;   ///< at each request, what was held already
    QStringList held;         ///< reasons of what is held now, in order
    QStringList requests() const { return handles_; }

  private:
    QDBusMessage answer(const QDBusMessage& call) override;
    QStringList handles_;  // of `held`
    QString latest_;
};

/// The part of logind that rules sleep.
class FakeLogind final : public FakeService {
  public:
    explicit FakeLogind(QDBusConnection bus);
    ~FakeLogind() override;

    /// What is asked to be held off, by whom, why and how, of each call so far.
    std::vector<QStringList> calls;
    /// Whether the lock of that call is held still.
    bool holds(std::size_t call) const;
    void prepareForSleep(bool begins);

  private:
    QDBusMessage answer(const QDBusMessage& call) override;
    std::vector<int> readEnds_;
};

/// The notification service.
class FakeNotifications final : public FakeService {
  public:
    explicit FakeNotifications(QDBusConnection bus);

    struct Notice {
        uint id = 0;
        uint replaces = 0;
        QString title, text;
        QStringList actions;
    };
    std::vector<Notice> notices;  ///< of each call so far
    std::vector<uint> closed;
    void choose(uint id, const QString& action = "default");

  private:
    QDBusMessage answer(const QDBusMessage& call) override;
};

/// The desktop's tray: hears of symbols, and works their menus.
class FakeTray final : public FakeService {
  public:
    explicit FakeTray(QDBusConnection bus);
    QString introspect(const QString& path) const override;

    /// Bus name of the symbol that is there; empty without one.
    QString symbol() const;
    /// The texts of its menu, from the top, separators left out; asks and waits.
    QStringList menuTexts();
    /// Chooses the entry that begins so; false when there is none or it is greyed out.
    bool choose(const QString& text);
    void click();

  private:
    QDBusMessage answer(const QDBusMessage& call) override;
    struct Entry {
        int id = 0;
        QString text;
        bool enabled = true;
    };
    std::vector<Entry> menu();

    QString symbol_;
};

}  // namespace veloran::test
