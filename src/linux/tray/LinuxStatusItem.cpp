#include "linux/tray/LinuxStatusItem.h"

#include "linux/tray/SymbolPixmaps.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

using State = StatusNotifierRegistration::State;

namespace {

bool hasText(const StatusItemContent& content) {
    return content.text && !content.text->isEmpty();
}

// MATE's panel throws the symbol away when it is given a text, and has nothing left to show when
// the text goes. Only an item that it has never seen gets a symbol again.
bool losesItsSymbol(const QString& desktop) {
    return desktop.split(u':').contains(u"MATE", Qt::CaseInsensitive);
}

} // namespace

LinuxStatusItem::LinuxStatusItem(
    const QDBusConnection& sessionBus, std::unique_ptr<BarAppearance> bar, Options options)
    : m_bus(sessionBus)
    , m_options(std::move(options))
    , m_bar(std::move(bar))
    , m_tray(m_options.tray) {
    connect(m_bar.get(), &BarAppearance::toneChanged, this, &LinuxStatusItem::draw);
    connect(&m_tray, &XEmbedItem::activated, this, [this](QPoint position) {
        Q_EMIT activated(position, {});
    });
    connect(&m_tray, &XEmbedItem::chosen, this, [this](MenuCommand command) {
        Q_EMIT commandChosen(command, {});
    });
    connect(&m_tray, &XEmbedItem::shown, this, &StatusItem::shown);
}

void LinuxStatusItem::show(const StatusItemContent& content) {
    const bool textWent = hasText(m_content) && !hasText(content);
    m_content = content;
    if (!m_session || (textWent && losesItsSymbol(m_options.desktop)))
        appear();
    draw();
    m_session->setContent(content);
    m_tray.setContent(content);
}

void LinuxStatusItem::appear() {
    using Connection = StatusNotifierSession::Connection;
    const bool own = losesItsSymbol(m_options.desktop);
    const QDBusConnection bus =
        own ? m_options.connect(u"lumora-item-%1"_s.arg(++m_appearances)) : m_bus;
    // Whoever called may have been called by the old one.
    if (m_session) {
        m_session->disconnect(this);
        m_session->deleteLater();
    }
    m_session = new StatusNotifierSession(bus, own ? Connection::Own : Connection::Shared, this);
    m_session->setPixmaps(m_pixmaps);
    connect(m_session, &StatusNotifierSession::activated, this, &StatusItem::activated);
    connect(m_session, &StatusNotifierSession::commandChosen, this, &StatusItem::commandChosen);
    connect(
        m_session, &StatusNotifierSession::stateChanged, this, &LinuxStatusItem::onPlaceChanged);
    // Nobody is told before this returns to the event loop, when the item has its face.
    m_session->start();
}

void LinuxStatusItem::draw() {
    if (!m_session)
        return;
    const std::pair wanted(m_content.symbol, m_bar->tone());
    if (m_drawn == wanted)
        return;
    m_drawn = wanted;
    const SymbolPixmaps pixmaps(m_content.symbol, m_bar->tone());
    m_pixmaps = pixmaps.forStatusItem();
    m_session->setPixmaps(m_pixmaps);
    m_tray.setIcon(pixmaps.icon());
}

void LinuxStatusItem::onPlaceChanged() {
    const State state = m_session->state();
    m_tray.setWanted(state == State::NoWatcher);
    if (state == State::Shown)
        Q_EMIT shown();
}

QString LinuxStatusItem::unavailableReason() const {
    const State state = m_session ? m_session->state() : State::Looking;
    if (state == State::Shown || m_tray.isShown())
        return {};
    if (state == State::Looking)
        return u"No status area: none has been found yet"_s;
    if (state == State::NotShown)
        return u"No status area: the desktop keeps status items, but nothing shows them"_s;
    if (!m_bus.isConnected())
        return u"No status area: there is no session bus and no system tray"_s;
    return u"No status area: the desktop has neither status items nor a system tray"_s;
}

} // namespace lumora
