#pragma once

#include "platform/Completion.h"
#include "platform/NotificationCenter.h"

#include <memory>
#include <vector>

namespace lumora::tests {

/// A notification centre that shows nothing: it keeps what is pending and remembers what it was
/// asked for. Questions are answered at once, unless the test holds the answers back.
class FakeNotificationCenter final : public NotificationCenter {
public:
    ~FakeNotificationCenter() override;

    QCoro::Task<bool> requestAuthorization() override;
    QCoro::Task<QStringList> pendingIdentifiers() override;
    void removePending(const QStringList& identifiers) override;
    void removeAllPending() override;
    void add(const NotificationRequest& request) override;

    /// From now on questions wait for `answer`.
    void hold() { m_holding = true; }

    /// Answers the question that has waited longest, by how things stand now.
    void answer();

    /// How many questions wait.
    std::size_t heldCount() const { return m_held.size(); }

    bool grants = true;                       ///< whether permission is given
    std::vector<NotificationRequest> pending; ///< in the order of first adding
    QStringList calls; ///< "authorize", "list", "remove a,b", "remove all", "add a", in order

private:
    using Question = std::shared_ptr<Completion<bool>>;

    Question ask();

    bool m_holding = false;
    std::vector<Question> m_held;
};

} // namespace lumora::tests
