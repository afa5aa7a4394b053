#include "e2e/AccessibleTree.h"

#include "support/Patience.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <QTest>

#include <sys/prctl.h>

#include <csignal>
#include <stdexcept>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

const QString connectionName = u"accessibility"_s;
const QString launcherPath = u"/usr/libexec/at-spi-bus-launcher"_s;
const QString registry = u"org.a11y.atspi.Registry"_s;
const QString rootPath = u"/org/a11y/atspi/accessible/root"_s;
const QString accessible = u"org.a11y.atspi.Accessible"_s;

/// The protocol's names of the states, by their bits.
const QStringList stateNames{
    u"invalid"_s,         u"active"_s,
    u"armed"_s,           u"busy"_s,
    u"checked"_s,         u"collapsed"_s,
    u"defunct"_s,         u"editable"_s,
    u"enabled"_s,         u"expandable"_s,
    u"expanded"_s,        u"focusable"_s,
    u"focused"_s,         u"has tooltip"_s,
    u"horizontal"_s,      u"iconified"_s,
    u"modal"_s,           u"multi line"_s,
    u"multiselectable"_s, u"opaque"_s,
    u"pressed"_s,         u"resizable"_s,
    u"selectable"_s,      u"selected"_s,
    u"sensitive"_s,       u"showing"_s,
    u"single line"_s,     u"stale"_s,
    u"transient"_s,       u"vertical"_s,
    u"visible"_s,         u"manages descendants"_s,
    u"indeterminate"_s,   u"required"_s,
    u"truncated"_s,       u"animated"_s,
    u"invalid entry"_s,   u"supports autocompletion"_s,
    u"selectable text"_s, u"default"_s,
    u"visited"_s,         u"checkable"_s,
    u"has popup"_s,       u"read only"_s,
};

QStringList statesIn(const QDBusMessage& answer) {
    const auto words = qdbus_cast<QList<uint>>(answer.arguments().value(0));
    QStringList states;
    for (qsizetype bit = 0; bit < stateNames.size(); ++bit) {
        if (words.value(bit / 32) >> (bit % 32) & 1U)
            states += stateNames.at(bit);
    }
    return states;
}

void append(std::vector<const AccessibleNode*>& nodes, const AccessibleNode& node) {
    nodes.push_back(&node);
    for (const AccessibleNode& child : node.children)
        append(nodes, child);
}

} // namespace

std::vector<const AccessibleNode*> AccessibleNode::all() const {
    std::vector<const AccessibleNode*> nodes;
    append(nodes, *this);
    return nodes;
}

AccessibleNode AccessibleNode::find(const QString& wantedName, const QString& wantedRole) const {
    for (const AccessibleNode* node : all()) {
        if (node->name == wantedName && (wantedRole.isEmpty() || node->role == wantedRole))
            return *node;
    }
    return {};
}

AccessibleNode AccessibleNode::findShown(const QString& beginning) const {
    for (const AccessibleNode* node : all()) {
        if (node->name.startsWith(beginning) && node->has(u"showing"_s))
            return *node;
    }
    return {};
}

QString AccessibleNode::spoken() const {
    QStringList lines;
    for (const AccessibleNode* node : all())
        lines += {node->name, node->description, node->text};
    lines.removeAll(QString());
    return lines.join(u'\n');
}

AccessibleTree::AccessibleTree(ProgramHarness& lumora)
    : m_lumora(lumora) {
    lumora.setVariable(u"DISPLAY"_s, QString::fromLatin1(m_display.name()));
    lumora.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    lumora.setVariable(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    QProcessEnvironment environment = lumora.makeProcess()->processEnvironment();
    // The settings of the person who runs the tests play no part.
    environment.insert(u"GSETTINGS_BACKEND"_s, u"memory"_s);
    m_launcher.setProcessEnvironment(environment);
    m_launcher.setStandardOutputFile(QProcess::nullDevice());
    m_launcher.setStandardErrorFile(QProcess::nullDevice());
    // A test that is killed takes it along.
    m_launcher.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGTERM); });
    m_launcher.start(launcherPath, {u"--launch-immediately"_s});

    BusProbe session(lumora.sessionBus().connect(), u"org.a11y.Bus"_s);
    QString address;
    const auto answers = [&] {
        address = session.call(u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s)
                      .arguments()
                      .value(0)
                      .toString();
        return address.startsWith("unix:"_L1);
    };
    if (!m_launcher.waitForStarted(patience) || !QTest::qWaitFor(answers, patience))
        throw std::runtime_error("no accessibility service: is at-spi2-core installed?");
    m_bus = QDBusConnection::connectToBus(address, connectionName);
}

AccessibleTree::~AccessibleTree() {
    m_lumora.end(); // no program survives its display
    QDBusConnection::disconnectFromBus(connectionName);
    m_launcher.terminate();
    m_launcher.waitForFinished(patience);
}

QDBusMessage AccessibleTree::call(
    const QString& service, const QString& path, const QString& interface, const QString& method,
    const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    // A tree is hundreds of calls, none of which the program needs the test's help for.
    return m_bus.call(message, QDBus::Block, patience);
}

QString
AccessibleTree::property(const QString& path, const QString& interface, const QString& name) {
    const QDBusMessage answer =
        call(m_program, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interface, name});
    return answer.arguments().value(0).value<QDBusVariant>().variant().toString();
}

QStringList
AccessibleTree::childrenOf(const QString& service, const QString& path, QStringList* services) {
    const QDBusMessage answer = call(service, path, accessible, u"GetChildren"_s);
    QStringList children;
    if (answer.type() != QDBusMessage::ReplyMessage)
        return children;
    const auto list = answer.arguments().at(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString owner;
        QDBusObjectPath child;
        list.beginStructure();
        list >> owner >> child;
        list.endStructure();
        children += child.path();
        if (services)
            *services += owner;
    }
    list.endArray();
    return children;
}

QString AccessibleTree::findProgram() {
    QStringList services;
    childrenOf(registry, rootPath, &services);
    return services.value(0);
}

AccessibleNode AccessibleTree::read(const QString& path) {
    AccessibleNode node{
        .path = path,
        .name = property(path, accessible, u"Name"_s),
        .role = call(m_program, path, accessible, u"GetRoleName"_s).arguments().value(0).toString(),
        .description = property(path, accessible, u"Description"_s),
        .text = {},
        .states = statesIn(call(m_program, path, accessible, u"GetState"_s)),
        .children = {},
    };
    const auto interfaces =
        call(m_program, path, accessible, u"GetInterfaces"_s).arguments().value(0).toStringList();
    if (interfaces.contains(u"org.a11y.atspi.Text"_s))
        node.text = call(m_program, path, u"org.a11y.atspi.Text"_s, u"GetText"_s, {0, -1})
                        .arguments()
                        .value(0)
                        .toString();
    const QStringList children = childrenOf(m_program, path, nullptr);
    for (const QString& child : children)
        node.children.push_back(read(child));
    return node;
}

AccessibleNode AccessibleTree::window(const QString& title) {
    m_program = findProgram();
    if (m_program.isEmpty())
        return {};
    const QStringList windows = childrenOf(m_program, rootPath, nullptr);
    for (const QString& path : windows) {
        if (property(path, accessible, u"Name"_s) == title)
            return read(path);
    }
    return {};
}

testing::AssertionResult AccessibleTree::comesToBe(
    const QString& title, const std::function<bool(const AccessibleNode&)>& wanted) {
    AccessibleNode seen;
    const auto matches = [&] {
        seen = window(title);
        return seen.exists() && wanted(seen);
    };
    if (QTest::qWaitFor(matches, patience))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << (seen.exists() ? "last read:\n" + seen.spoken().toStdString() : "no such window");
}

void AccessibleTree::listen() {
    call(
        registry, u"/org/a11y/atspi/registry"_s, registry, u"RegisterEvent"_s,
        {u"object:state-changed:showing"_s});
    m_program = findProgram();
    m_bus.connect(
        m_program, {}, u"org.a11y.atspi.Event.Object"_s, u"StateChanged"_s, this,
        SLOT(hear(QDBusMessage)));
    // The program learns of its listener in its own time, but in order.
    call(registry, rootPath, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    call(m_program, rootPath, accessible, u"GetRoleName"_s);
}

void AccessibleTree::hear(const QDBusMessage& change) {
    if (change.arguments().value(0) == u"showing"_s && change.arguments().value(1) == 1)
        m_appeared += change.path();
}

std::vector<AccessibleNode> AccessibleTree::appeared() {
    call(m_program, rootPath, accessible, u"GetRoleName"_s);
    QCoreApplication::processEvents();
    std::vector<AccessibleNode> nodes;
    const QStringList paths = std::exchange(m_appeared, {});
    for (const QString& path : paths)
        nodes.push_back(read(path));
    return nodes;
}

QRect AccessibleTree::place(const AccessibleNode& node) {
    constexpr uint onScreen = 0;
    const QDBusMessage answer =
        call(m_program, node.path, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {onScreen});
    if (answer.type() != QDBusMessage::ReplyMessage)
        return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto extents = answer.arguments().at(0).value<QDBusArgument>();
    extents.beginStructure();
    extents >> x >> y >> width >> height;
    extents.endStructure();
    return {x, y, width, height};
}

bool AccessibleTree::press(const AccessibleNode& node) {
    const QDBusMessage answer =
        call(m_program, node.path, u"org.a11y.atspi.Action"_s, u"DoAction"_s, {0});
    return answer.arguments().value(0).toBool();
}

bool AccessibleTree::focus(const AccessibleNode& node) {
    const QDBusMessage answer =
        call(m_program, node.path, u"org.a11y.atspi.Component"_s, u"GrabFocus"_s);
    return answer.arguments().value(0).toBool();
}

} // namespace lumora::tests
