#pragma once

#include "support/PrivateBus.h"

#include <QDBusVirtualObject>
#include <QThread>

#include <functional>
#include <memory>

namespace lumora::tests {

/// A Secret Service with one collection and at most one item, in a thread of its own so that it
/// can answer callers that block. It does what a test says and counts what it is asked.
class FakeSecretService {
public:
    explicit FakeSecretService(PrivateBus& bus);
    ~FakeSecretService();
    FakeSecretService(const FakeSecretService&) = delete;
    FakeSecretService& operator=(const FakeSecretService&) = delete;

    static QString collectionPath();

    /// Calls of this method, too, get no answer, ever.
    void neverAnswer(const QString& method);

    /// Every call from now on gets its answer.
    void answerAgain();

    /// Whether there is an item (it is unlocked and holds "from the fake").
    void setHasItem(bool hasItem);

    /// Whether the collection is locked. `announced`: PropertiesChanged tells of it.
    void setLocked(bool locked, bool announced = true);

    /// Ends the prompt that is shown.
    void completePrompt(bool dismissed);

    /// Whether removing needs a prompt.
    void setConfirmsRemoval(bool confirms);

    /// How often the method was called so far.
    int calls(const QString& method) const;

private:
    class Answers;

    void onItsThread(const std::function<void()>& change) const;

    QThread m_thread;
    std::unique_ptr<Answers> m_answers;
};

} // namespace lumora::tests
