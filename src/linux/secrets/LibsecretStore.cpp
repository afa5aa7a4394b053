#include "linux/secrets/LibsecretStore.h"

#include "linux/secrets/SecretConversation.h"
#include "linux/secrets/SecretServiceNames.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

QString pathOf(gpointer proxy) {
    return QString::fromUtf8(g_dbus_proxy_get_object_path(G_DBUS_PROXY(proxy)));
}

/// Whether there are as many file descriptors left as a conversation takes. GLib ends the program
/// where it needs one and gets none.
bool hasSpareDescriptors() {
    constexpr int needed = 8;
    std::array<int, needed> taken{};
    for (int& descriptor : taken)
        descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    const bool enough = std::ranges::none_of(taken, [](int descriptor) { return descriptor < 0; });
    for (const int descriptor : taken) {
        if (descriptor >= 0)
            close(descriptor);
    }
    return enough;
}

bool isLocked(const GioPointer<SecretItem>& item) {
    return secret_item_get_locked(item.get());
}

std::optional<QByteArray> secretOf(const GioPointer<SecretItem>& item) {
    SecretValue* const value = secret_item_get_secret(item.get());
    if (!value)
        return std::nullopt;
    gsize size = 0;
    const gchar* const bytes = secret_value_get(value, &size);
    QByteArray secret(bytes, static_cast<qsizetype>(size));
    secret_value_unref(value);
    return secret;
}

} // namespace

QString LibsecretStore::sessionBusAddress() {
    QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty())
        return address;
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s;
    return QFileInfo::exists(socket) ? u"unix:path="_s + socket : QString();
}

LibsecretStore::LibsecretStore(
    QDBusConnection bus, QString busAddress, std::chrono::milliseconds timeout,
    SecretOutage::Now now)
    : m_bus(bus)
    , m_busAddress(std::move(busAddress))
    , m_timeout(timeout)
    , m_monitor(bus)
    , m_unlocker(bus)
    , m_outage(std::move(now)) {
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, &SecretStore::readable);

    using Monitor = SecretServiceMonitor;
    connect(&m_monitor, &Monitor::serviceAppeared, this, &LibsecretStore::serviceAnswered);
    connect(&m_monitor, &Monitor::serviceAnswered, this, &LibsecretStore::serviceAnswered);
    connect(&m_monitor, &Monitor::serviceAppeared, &m_unlocker, &SecretUnlocker::serviceChanged);
    connect(&m_monitor, &Monitor::serviceGone, &m_settling, &QTimer::stop);
    connect(&m_monitor, &Monitor::serviceGone, &m_unlocker, &SecretUnlocker::serviceChanged);
    connect(&m_monitor, &Monitor::itemTouched, this, &LibsecretStore::itemTouched);
    connect(&m_monitor, &Monitor::unlockReported, this, &LibsecretStore::becameReachable);
    connect(&m_monitor, &Monitor::unlockReported, &m_unlocker, &SecretUnlocker::unlockReported);
    connect(&m_unlocker, &SecretUnlocker::unlocked, this, &LibsecretStore::becameReachable);
}

QString LibsecretStore::keyringOf(const QString& process) {
    // The system keeps the first fifteen characters of a name.
    if (process.startsWith(u"gnome-keyring"))
        return u"GNOME Keyring"_s;
    if (process.startsWith(u"kwalletd") || process == u"ksecretd")
        return u"KWallet"_s;
    if (process == u"keepassxc")
        return u"KeePassXC"_s;
    return {};
}

QString LibsecretStore::keeper() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s,
        u"GetConnectionUnixProcessID"_s);
    question.setArguments({secretService::name});
    // The bus itself answers, and at once.
    const QDBusMessage answer = m_bus.call(question, QDBus::Block, int(m_timeout.count()));
    if (answer.type() != QDBusMessage::ReplyMessage)
        return {};
    QFile name(u"/proc/%1/comm"_s.arg(answer.arguments().value(0).toUInt()));
    const bool isThere = name.open(QFile::ReadOnly);
    return isThere ? keyringOf(QString::fromUtf8(name.readAll()).trimmed()) : QString();
}

SecretLookup LibsecretStore::lookup(const SecretKey& key) {
    const auto isKnown = [&key](const SecretKey& known) {
        return known.service == key.service && known.account == key.account;
    };
    if (std::ranges::none_of(m_keys, isKnown))
        m_keys += key;
    m_lockedCollection.clear();
    SecretLookup result = ask(key);
    using Status = SecretLookup::Status;
    m_found = result.status == Status::Found;
    if (result.status == Status::Found || result.status == Status::Absent)
        m_unlocker.foundUnlocked();
    return result;
}

/// Why a conversation is not even begun.
std::optional<SecretFailure> LibsecretStore::refusal() const {
    if (const auto reason = m_outage.reason())
        return SecretFailure{.reason = *reason};
    if (!hasSpareDescriptors())
        return SecretFailure{.reason = u"Too many files are open"_s};
    return std::nullopt;
}

SecretLookup LibsecretStore::ask(const SecretKey& key) {
    using Status = SecretLookup::Status;
    if (const auto refused = refusal())
        return failed(*refused);
    SecretConversation conversation(m_busAddress, m_timeout);
    const auto items = conversation.open().and_then(
        [&] { return conversation.search(key, SECRET_SEARCH_LOAD_SECRETS); });
    if (!items)
        return failed(items.error());

    for (const auto& item : *items) {
        if (const auto secret = isLocked(item) ? std::nullopt : secretOf(item))
            return {Status::Found, *secret, {}};
    }
    // An item lies right below its collection.
    if (const auto locked = std::ranges::find_if(*items, isLocked); locked != items->end())
        return lockedIn(QFileInfo(pathOf(locked->get())).path());
    return askWithoutItems(conversation);
}

SecretLookup LibsecretStore::askWithoutItems(SecretConversation& conversation) {
    // A keyring that was never unlocked since it started answers that it holds nothing.
    for (const char* alias : {"default", "login"}) {
        const auto collection = conversation.collection(alias);
        if (!collection)
            return failed(collection.error());
        if (*collection && secret_collection_get_locked(collection->get()))
            return lockedIn(pathOf(collection->get()));
    }
    return {SecretLookup::Status::Absent, {}, {}};
}

SecretLookup LibsecretStore::lockedIn(const QString& collectionPath) {
    m_lockedCollection = collectionPath;
    return {SecretLookup::Status::Locked, {}, {}};
}

SecretLookup LibsecretStore::failed(const SecretFailure& failure) {
    using Status = SecretLookup::Status;
    noticeSilence(failure);
    if (failure.locked)
        return {Status::Locked, {}, {}};
    return {Status::Unavailable, {}, failure.reason};
}

void LibsecretStore::noticeSilence(const SecretFailure& failure) {
    if (failure.silent && m_outage.begin(failure.reason))
        m_monitor.waitForAnswer();
}

void LibsecretStore::serviceAnswered() {
    m_outage.end();
    becameReachable();
}

void LibsecretStore::askToUnlock() {
    if (!m_lockedCollection.isEmpty())
        m_unlocker.foundLocked(m_lockedCollection);
}

bool LibsecretStore::add(const SecretKey& key, const QString& label, const QByteArray& secret) {
    if (refusal())
        return false;
    SecretConversation conversation(m_busAddress, m_timeout);
    const auto collection =
        conversation.open().and_then([&] { return conversation.collection("default"); });
    if (!collection) {
        noticeSilence(collection.error());
        return false;
    }
    if (!*collection)
        return false;
    if (secret_collection_get_locked(collection->get())) {
        m_unlocker.foundLocked(pathOf(collection->get()));
        return false;
    }
    const auto created = conversation.createItem(**collection, key, label, secret);
    if (!created)
        noticeSilence(created.error());
    return created.has_value();
}

SecretRemoval LibsecretStore::remove(const SecretKey& key) {
    if (refusal())
        return SecretRemoval::Failed;
    SecretConversation conversation(m_busAddress, m_timeout);
    const auto items =
        conversation.open().and_then([&] { return conversation.search(key, SECRET_SEARCH_NONE); });
    if (!items) {
        noticeSilence(items.error());
        return SecretRemoval::Failed;
    }
    if (items->empty()) {
        const bool isAbsent = askWithoutItems(conversation).status == SecretLookup::Status::Absent;
        askToUnlock();
        return isAbsent ? SecretRemoval::NotFound : SecretRemoval::Failed;
    }
    for (const auto& item : *items) {
        if (isLocked(item))
            m_unlocker.foundLocked(QFileInfo(pathOf(item.get())).path());
        else
            std::ignore = conversation.removeItem(*item);
    }
    // Services report removals that did not happen as done: only looking again tells.
    const auto left = conversation.search(key, SECRET_SEARCH_NONE);
    if (!left)
        noticeSilence(left.error());
    return left && left->empty() ? SecretRemoval::Removed : SecretRemoval::Failed;
}

void LibsecretStore::itemTouched(const SecretAttributes& attributes) {
    const auto belongsTo = [&attributes](const SecretKey& key) {
        return attributes.value(u"service"_s) == key.service &&
               attributes.value(u"account"_s) == key.account;
    };
    if (std::ranges::any_of(m_keys, belongsTo) && !m_settling.isActive())
        m_settling.start();
}

void LibsecretStore::becameReachable() {
    if (!m_found && !m_settling.isActive())
        m_settling.start();
}

} // namespace lumora
