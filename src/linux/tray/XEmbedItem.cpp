#include "linux/tray/XEmbedItem.h"

#include "texts/PlainText.h"

#include <QCursor>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// The toolkit guesses whether a tool tip is markup; text that says so leaves nothing to guess.
QString toolTipMarkup(const StatusItemContent& content) {
    QString markup = escapedForMarkup(content.toolTipTitle);
    if (!content.toolTipBody.isEmpty())
        markup += u'\n' + escapedForMarkup(content.toolTipBody);
    return u"<qt>%1</qt>"_s.arg(markup.replace(u'\n', "<br/>"_L1));
}

} // namespace

XEmbedItem::XEmbedItem(Options options, QObject* parent)
    : QObject(parent)
    , m_trayExists(std::move(options.trayExists))
    , m_windows(std::move(options.windows))
    , m_makeWatch(std::move(options.watch))
    , m_grace(options.grace)
    , m_pause(options.pause)
    , m_settling(options.settling) {
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &XEmbedItem::look);
}

XEmbedItem::~XEmbedItem() = default;

void XEmbedItem::setContent(const StatusItemContent& content) {
    const StatusItemContent before = std::exchange(m_content, content);
    if (!m_tray || before == content)
        return;
    m_tray->setToolTip(toolTipMarkup(m_content));
    // The menu may be open.
    if (before.menu != content.menu)
        fillMenu();
}

void XEmbedItem::setIcon(const QIcon& icon, QSize room) {
    m_icon = icon;
    m_room = room;
    if (!m_tray)
        return;
    m_tray->setIcon(m_icon);
    askForRoom();
}

// The toolkit asks trays for a square, but with a window like any other. Where it has none, its
// square is all there is.
void XEmbedItem::askForRoom() {
    if (m_window)
        m_window->setMinimumSize(m_room);
}

void XEmbedItem::showInTray() {
    const QWidgetList before = m_windows();
    m_tray->show();
    for (QWidget* const window : m_windows()) {
        if (!before.contains(window))
            m_window = window;
    }
    askForRoom();
}

void XEmbedItem::setWanted(bool wanted) {
    if (!wanted) {
        m_timer.stop();
        m_watch.reset();
        m_tray.reset();
        m_menu.reset();
    } else if (!m_tray && !m_timer.isActive()) {
        m_timer.start(m_grace);
    }
}

void XEmbedItem::look() {
    if (!m_trayExists()) {
        m_timer.start(m_pause);
        return;
    }
    if (!m_watch)
        m_watch = m_makeWatch([this] { onTrayChanged(); });
    m_menu = std::make_unique<QMenu>();
    m_tray = std::make_unique<QSystemTrayIcon>(m_icon);
    m_tray->setContextMenu(m_menu.get());
    connect(m_tray.get(), &QSystemTrayIcon::activated, this, &XEmbedItem::onPressed);
    m_tray->setToolTip(toolTipMarkup(m_content));
    fillMenu();
    showInTray();
    Q_EMIT shown();
}

// The toolkit would go into another tray by itself, but as a square again.
void XEmbedItem::onTrayChanged() {
    m_tray.reset();
    m_menu.reset();
    m_timer.start(m_settling);
}

void XEmbedItem::onPressed(QSystemTrayIcon::ActivationReason reason) {
    // The menu opens by itself, and a double click began with a press that has been reported.
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::MiddleClick)
        Q_EMIT activated(QCursor::pos());
}

void XEmbedItem::fillMenu() {
    m_menu->clear();
    for (const StatusMenuRow& row : std::as_const(m_content.menu)) {
        if (row.kind == StatusMenuRow::Kind::Separator) {
            m_menu->addSeparator();
            continue;
        }
        // A single ampersand would underline the next letter.
        QAction* action = m_menu->addAction(singleLine(row.label).replace(u'&', "&&"_L1));
        action->setEnabled(row.kind == StatusMenuRow::Kind::Action);
        connect(action, &QAction::triggered, this, [this, command = row.command] {
            Q_EMIT chosen(command);
        });
    }
}

} // namespace lumora
