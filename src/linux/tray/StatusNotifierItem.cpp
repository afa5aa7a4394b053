#include "linux/tray/StatusNotifierItem.h"

#include "linux/tray/LabelDrawing.h"
#include "texts/PlainText.h"

#include <QDBusObjectPath>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// Hosts disagree on markup in the title: some escape it, some parse it. A title that would read
// differently goes to the head of the body, where all of them parse.
StatusToolTip toolTipOf(const StatusItemContent& content) {
    QString title = singleLine(content.toolTipTitle);
    QString body = escapedForMarkup(content.toolTipBody);
    if (const QString escaped = escapedForMarkup(title); escaped != title) {
        body = body.isEmpty() ? escaped : escaped + u'\n' + body;
        title = u"Lumora"_s;
    }
    return {title, body};
}

// An empty text counts as none: hosts would show it in place of the symbol.
std::optional<QString> labelOf(const StatusItemContent& content) {
    if (!content.text || content.text->isEmpty())
        return std::nullopt;
    return singleLine(*content.text);
}

// For hosts that keep room for it: as wide as the text may become while its length stays.
QString guideFor(const QString& text) {
    return withEveryDigit(text, u'8');
}

bool isPress(const QDBusMessage& call) {
    const QString member = call.member();
    return call.signature() == u"ii" &&
           (member == u"Activate" || member == u"SecondaryActivate" || member == u"ContextMenu");
}

} // namespace

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& bus, QObject* parent)
    : ExportedObject(bus, u"/StatusNotifierItem"_s, u"org.kde.StatusNotifierItem"_s, parent) {
    registerTrayTypes();
}

void StatusNotifierItem::setContent(const StatusItemContent& content) {
    QVariantMap changed;
    QStringList invalidated;
    setTitle(singleLine(content.title), changed);
    setToolTip(toolTipOf(content));
    setLabel(labelOf(content), changed, invalidated);
    if (!changed.isEmpty() || !invalidated.isEmpty())
        sendPropertiesChanged(changed, invalidated);
}

void StatusNotifierItem::setTitle(const QString& title, QVariantMap& changed) {
    if (std::exchange(m_title, title) == title)
        return;
    sendSignal(u"NewTitle"_s);
    changed.insert(u"Title"_s, title);
}

void StatusNotifierItem::setToolTip(const StatusToolTip& toolTip) {
    if (std::exchange(m_toolTip, toolTip) == toolTip)
        return;
    // It changes every minute, with the age of the data, and every message wakes a thread here and
    // the host there. All hosts go by this one. A host that has been told and has not read it yet
    // either never will, or reads it when it is to be shown: it need not hear the same again.
    if (std::exchange(m_toolTipRead, false))
        sendSignal(u"NewToolTip"_s);
}

void StatusNotifierItem::aboutToBeRead(const QString& name) {
    if (name.isEmpty() || name == u"ToolTip")
        m_toolTipRead = true;
}

void StatusNotifierItem::setLabel(
    const std::optional<QString>& label, QVariantMap& changed, QStringList& invalidated) {
    if (std::exchange(m_label, label) == label)
        return;
    const QString text = label.value_or(QString());
    sendSignal(u"XAyatanaNewLabel"_s, {text, guideFor(text)});
    if (label) {
        changed.insert(u"XAyatanaLabel"_s, text);
        changed.insert(u"XAyatanaLabelGuide"_s, guideFor(text));
    } else {
        invalidated += {u"XAyatanaLabel"_s, u"XAyatanaLabelGuide"_s};
    }
}

void StatusNotifierItem::setPixmaps(const QList<IconPixmap>& pixmaps) {
    if (std::exchange(m_pixmaps, pixmaps) != pixmaps)
        announcePixmaps();
}

void StatusNotifierItem::setIconName(const QString& name) {
    if (std::exchange(m_iconName, name) == name)
        return;
    sendSignal(u"NewIcon"_s);
    sendPropertiesChanged({{u"IconName"_s, name}}, {});
}

void StatusNotifierItem::announcePixmaps() const {
    sendSignal(u"NewIcon"_s);
    // Hosts that want the pixels ask for them; most need one size of them only.
    sendPropertiesChanged({}, {u"IconPixmap"_s});
}

QByteArray StatusNotifierItem::takeActivationToken() {
    return std::exchange(m_activationToken, {});
}

QVariantMap StatusNotifierItem::properties() const {
    const QVariant noPixmaps = QVariant::fromValue(QList<IconPixmap>());
    QVariantMap all{
        {u"Category"_s, u"ApplicationStatus"_s},
        {u"Id"_s, u"lumora"_s},
        {u"Title"_s, m_title},
        {u"Status"_s, u"Active"_s},
        {u"WindowId"_s, 0},
        {u"IconName"_s, m_iconName},
        {u"IconPixmap"_s, QVariant::fromValue(m_pixmaps)},
        {u"IconThemePath"_s, QString()},
        {u"OverlayIconName"_s, QString()},
        {u"OverlayIconPixmap"_s, noPixmaps},
        {u"AttentionIconName"_s, QString()},
        {u"AttentionIconPixmap"_s, noPixmaps},
        {u"AttentionMovieName"_s, QString()},
        {u"ToolTip"_s, QVariant::fromValue(m_toolTip)},
        {u"ItemIsMenu"_s, false},
        {u"Menu"_s, QVariant::fromValue(QDBusObjectPath(u"/MenuBar"_s))},
    };
    // Even an empty label hides the symbol on some hosts, so without text there is no property.
    if (m_label) {
        all.insert(u"XAyatanaLabel"_s, *m_label);
        all.insert(u"XAyatanaLabelGuide"_s, guideFor(*m_label));
    }
    return all;
}

bool StatusNotifierItem::handleCall(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    if (isPress(call)) {
        // Answered before anything happens: the host must not wait for a window to open.
        reply(call);
        Q_EMIT activated(
            QPoint(arguments.at(0).toInt(), arguments.at(1).toInt()), takeActivationToken());
        return true;
    }
    if (call.member() == u"Scroll" && call.signature() == u"is") {
        reply(call);
        return true;
    }
    if (call.member() == u"ProvideXdgActivationToken" && call.signature() == u"s") {
        m_activationToken = arguments.at(0).toString().toUtf8();
        reply(call);
        return true;
    }
    return false;
}

} // namespace lumora
