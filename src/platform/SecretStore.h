#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>

namespace lumora {

/// What one credential item is found by. Nothing else takes part in finding it.
struct SecretKey {
    QString service;
    QString account;
};

/// The answer to a look-up.
struct SecretLookup {
    enum class Status {
        Found,       ///< `secret` holds the item's bytes, possibly none
        Absent,      ///< the store has no such item
        Locked,      ///< the item, or the collection it may be in, is locked
        Unavailable, ///< there is no store to ask, or it did not answer
    };

    Status status = Status::Unavailable;
    QByteArray secret;
    QString reason; ///< for people, why the store is unavailable; empty otherwise
};

/// The answer to a removal.
enum class SecretRemoval { Removed, NotFound, Failed };

/// The user's credential store. Every call is synchronous, never waits for a person, and answers
/// within half a second; once nobody has answered, the calls of the next half minute fail at once.
class SecretStore : public QObject {
    Q_OBJECT

public:
    [[nodiscard]] virtual SecretLookup lookup(const SecretKey& key) = 0;

    /// Adds an item with exactly the key's attributes; false when that failed.
    [[nodiscard]] virtual bool
    add(const SecretKey& key, const QString& label, const QByteArray& secret) = 0;

    /// Removes every item with the key's attributes.
    [[nodiscard]] virtual SecretRemoval remove(const SecretKey& key) = 0;

    /// Has the user asked, in the background and once per locking, to unlock what the last look-up
    /// found locked. Nothing happens when it found nothing locked.
    virtual void askToUnlock() {}

    /// What people call the program that keeps the secrets; empty while nobody knows.
    [[nodiscard]] virtual QString keeper() { return {}; }

Q_SIGNALS:
    /// An item that could not be read before may be readable now: the store appeared, was
    /// unlocked, or another program added or changed an item.
    void readable();
};

} // namespace lumora
