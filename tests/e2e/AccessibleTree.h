#pragma once

#include "support/PrivateDisplay.h"
#include "support/ProgramHarness.h"

#include <QDBusConnection>
#include <QObject>
#include <QRect>
#include <QStringList>

#include <functional>
#include <vector>

namespace lumora::tests {

/// One object of a program as assistive programs see it, with everything below it.
struct AccessibleNode {
    QString path; ///< on the accessibility bus; empty: there is no such object
    QString name;
    QString role; ///< in the protocol's words, e.g. "push button"
    QString description;
    QString text;       ///< of what can be edited
    QStringList states; ///< in the protocol's words, e.g. "focused"
    std::vector<AccessibleNode> children;

    bool exists() const { return !path.isEmpty(); }

    bool has(const QString& state) const { return states.contains(state); }

    /// The node itself and everything below it, in reading order.
    std::vector<const AccessibleNode*> all() const;

    /// The first node at or below this one with this name, and this role unless that is empty;
    /// one that does not exist when there is none.
    AccessibleNode find(const QString& wantedName, const QString& wantedRole = {}) const;

    /// The first node at or below this one that is shown and whose name begins like this; one that
    /// does not exist when there is none.
    AccessibleNode findShown(const QString& beginning) const;

    /// Every name, description and text at or below this node, one a line.
    QString spoken() const;
};

/// What a screen reader learns from the program: a display and an accessibility service of the
/// test's own, and the tree of objects that the program exports there. Make it before the program
/// starts.
class AccessibleTree : public QObject {
    Q_OBJECT

public:
    /// Starts both for `lumora`, which must outlive the tree; throws when that fails. The program
    /// ends with it.
    explicit AccessibleTree(ProgramHarness& lumora);
    ~AccessibleTree() override;
    AccessibleTree(const AccessibleTree&) = delete;
    AccessibleTree& operator=(const AccessibleTree&) = delete;

    /// The display that the program shows its windows on.
    QByteArray display() const { return m_display.name(); }

    /// The program's window of that title as it is now; one that does not exist when it has none.
    AccessibleNode window(const QString& title);

    /// Reads that window again and again until it is as `wanted`. Fails with what was read last.
    testing::AssertionResult
    comesToBe(const QString& title, const std::function<bool(const AccessibleNode&)>& wanted);

    /// Where the object is on the screen, in pixels where a point is one.
    QRect place(const AccessibleNode& node);

    /// Does what a click on the object does.
    bool press(const AccessibleNode& node);

    /// Gives the keyboard to the object.
    bool focus(const AccessibleNode& node);

    /// Keeps, from now on, which objects come into view. Programs only tell when somebody listens.
    void listen();

    /// What has come into view since then, or since this was last asked, as it is now.
    std::vector<AccessibleNode> appeared();

private Q_SLOTS:
    void hear(const QDBusMessage& change);

private:
    QDBusMessage call(
        const QString& service, const QString& path, const QString& interface,
        const QString& method, const QVariantList& arguments = {});
    QString property(const QString& path, const QString& interface, const QString& name);
    QString findProgram();
    QStringList childrenOf(const QString& service, const QString& path, QStringList* services);
    AccessibleNode read(const QString& path);

    ProgramHarness& m_lumora;
    PrivateDisplay m_display;
    QProcess m_launcher;
    QDBusConnection m_bus{QString()};
    QStringList m_appeared; ///< their paths
    QString m_program;      ///< its unique name on the accessibility bus
};

} // namespace lumora::tests
