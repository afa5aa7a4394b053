#include "linux/tray/LinuxStatusItem.h"

#include "platform/AppStorageBacked.h"
#include "platform/DesktopNames.h"
#include "texts/PlainText.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

using State = StatusNotifierRegistration::State;

int largestScale() {
    double largest = 1;
    for (const QScreen* screen : QGuiApplication::screens())
        largest = std::max(largest, screen->devicePixelRatio());
    return int(std::ceil(largest));
}

namespace {

/// Installed with the program.
const QString iconName = u"com.lumora.app-symbolic"_s;

bool hasText(const StatusItemContent& content) {
    return content.text && !content.text->isEmpty();
}

// MATE's panel throws the symbol away when it is given a text, and has nothing left to show when
// the text goes. Only an item that it has never seen gets a symbol again.
bool losesItsSymbol(const QString& desktop) {
    return namesDesktop(desktop, {"MATE"_L1});
}

LabelPicture
pictureOf(const StatusItemContent& content, LabelForm::Picture picture, SymbolTone tone) {
    const QFont font = QGuiApplication::font();
    const QString text = singleLine(content.text.value_or(QString()));
    const QString brief = content.shortText.value_or(QString());
    switch (picture) {
    case LabelForm::Picture::ShortText:
        if (!brief.isEmpty())
            return {.symbol = {}, .text = brief, .tone = tone, .font = font};
        break;
    case LabelForm::Picture::SymbolAndText:
        if (!text.isEmpty())
            return {.symbol = content.symbol, .text = text, .tone = tone, .font = font};
        break;
    case LabelForm::Picture::Symbol:
        break;
    }
    return {.symbol = content.symbol, .text = {}, .tone = tone, .font = {}};
}

} // namespace

LinuxStatusItem::LinuxStatusItem(
    const QDBusConnection& sessionBus, const Preferences& preferences,
    std::unique_ptr<BarAppearance> bar, Options options)
    : m_bus(sessionBus)
    , m_preferences(preferences)
    , m_options(std::move(options))
    , m_bar(std::move(bar))
    , m_host(sessionBus, m_options.nameOf)
    , m_tray(m_options.tray) {
    connect(m_bar.get(), &BarAppearance::toneChanged, this, &LinuxStatusItem::present);
    connect(&m_host, &StatusAreaHost::changed, this, &LinuxStatusItem::present);
    connect(&m_preferences, &Preferences::changed, this, &LinuxStatusItem::present);
    m_insistence.setSingleShot(true);
    connect(&m_insistence, &QTimer::timeout, this, &LinuxStatusItem::insist);
    connect(&m_tray, &XEmbedItem::activated, this, [this](QPoint position) {
        Q_EMIT activated(position, {});
    });
    connect(&m_tray, &XEmbedItem::chosen, this, [this](MenuCommand command) {
        Q_EMIT commandChosen(command, {});
    });
    connect(&m_tray, &XEmbedItem::shown, this, &LinuxStatusItem::drawInTray); // it is known now
    connect(&m_tray, &XEmbedItem::shown, this, &StatusItem::shown);
}

void LinuxStatusItem::show(const StatusItemContent& content) {
    m_content = content;
    if (!m_session)
        appear();
    present();
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
    connect(m_session, &StatusNotifierSession::watcherChanged, &m_host, &StatusAreaHost::look);
    connect(
        m_session, &StatusNotifierSession::stateChanged, this, &LinuxStatusItem::onPlaceChanged);
    // Nobody is told before this returns to the event loop, when the item has its face.
    m_session->start();
}

LabelForm LinuxStatusItem::formFor(const QString& keeper, bool isOldTray) const {
    return labelFormFor(
        {.process = keeper,
         .desktop = m_options.desktop,
         .wish = AppStorageBacked(m_preferences, PreferenceKeys::label).wrappedValue(),
         .isOldTray = isOldTray});
}

LabelPicture LinuxStatusItem::pictureFor(const LabelForm& form) const {
    LabelPicture wanted = pictureOf(m_content, form.picture, m_bar->tone());
    wanted.height = form.height;
    wanted.scale = m_options.scale();
    return wanted;
}

void LinuxStatusItem::present() {
    if (!m_session)
        return;
    const LabelForm wanted = formFor(m_host.process(), false);
    StatusItemContent content = m_content;
    if (!wanted.hasTextBeside)
        content.text.reset();
    if (m_hasTextBeside && !hasText(content) && losesItsSymbol(m_options.desktop))
        appear();
    m_hasTextBeside = hasText(content);
    draw(wanted);
    m_session->setIconName(wanted.isNamed ? iconName : QString());
    m_session->setContent(content);
}

void LinuxStatusItem::draw(const LabelForm& form) {
    const LabelPicture wanted = pictureFor(form);
    if (m_drawn != wanted) {
        m_drawn = wanted;
        m_pixmaps = LabelPixmaps(wanted).forStatusItem();
    }
    m_session->setPixmaps(m_pixmaps);
    if (m_session->state() == State::NoWatcher)
        drawInTray();
}

void LinuxStatusItem::drawInTray() {
    const LabelPicture wanted = pictureFor(formFor(m_options.trayKeeper(), true));
    if (m_drawnInTray == wanted)
        return;
    m_drawnInTray = wanted;
    const LabelPixmaps drawn(wanted);
    m_tray.setIcon(drawn.icon(), drawn.room());
}

void LinuxStatusItem::onPlaceChanged() {
    const State state = m_session->state();
    present();
    m_tray.setWanted(state == State::NoWatcher);
    if (state == State::Shown) {
        // GNOME's extension takes its time.
        m_insistence.start(m_options.insistence * (isGnomeShell() ? 5 : 1));
        m_insisted = 0;
        Q_EMIT shown();
    }
}

// waybar draws nothing of an item that was there before it, until the symbol changes; on a machine
// that is busy starting it may take seconds to be ready for that. GNOME's extension draws no text
// that was there before it, until the item is registered anew or the text changes.
void LinuxStatusItem::insist() {
    constexpr int times = 3;
    const bool isGnome = isGnomeShell();
    m_session->insist(isGnome);
    if (!isGnome && ++m_insisted < times)
        m_insistence.start(m_insistence.intervalAsDuration() * 3);
}

bool LinuxStatusItem::isGnomeShell() const {
    return m_host.process() == u"gnome-shell";
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
