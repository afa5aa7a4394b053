#include "platform/LinkPolicy.h"

#include "briefing/ControlCharacters.h"
#include "platform/AppStorageBacked.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

bool isOfTheWeb(const QString& scheme) {
    return scheme == u"https" || scheme == u"http";
}

/// Those that meeting programs register, and telephone numbers to dial in by.
const QStringList& meetingSchemes() {
    static const QStringList schemes{
        u"tel"_s, u"zoommtg"_s, u"zoomus"_s, u"msteams"_s,  u"webex"_s,
        u"sip"_s, u"sips"_s,    u"xmpp"_s,   u"facetime"_s,
    };
    return schemes;
}

/// Schemes that nobody may ask for: they read local files or run code, or carry another address
/// that may be one of these.
bool isForbidden(const QString& scheme) {
    static const QStringList schemes{
        u"file"_s, u"admin"_s,       u"qrc"_s, u"javascript"_s, u"vbscript"_s,
        u"data"_s, u"view-source"_s, u"jar"_s, u"filesystem"_s, u"blob"_s,
    };
    return schemes.contains(scheme);
}

/// UTF-16 units. A program can be handed no more than 128 KiB in one argument.
constexpr qsizetype longestLink = qsizetype{32} * 1024;

/// Whether `character` does something instead of standing for itself.
bool isControl(QChar character) {
    return isControlCharacter(character) || bidiControl(character) != BidiControl::None;
}

} // namespace

LinkPolicy::LinkPolicy(const QString& furtherSchemes) {
    static const QRegularExpression between(u"[\\s,]+"_s);
    for (const QString& name : furtherSchemes.toLower().split(between, Qt::SkipEmptyParts)) {
        if (!isForbidden(name))
            m_further += name;
    }
}

bool LinkPolicy::allows(const QUrl& url) const {
    const QString scheme = url.scheme(); // in small letters
    if (!url.isValid())
        return false;
    if (isOfTheWeb(scheme))
        return !url.host().isEmpty();
    return (meetingSchemes().contains(scheme) || m_further.contains(scheme)) &&
           !(url.host().isEmpty() && url.path().isEmpty());
}

std::optional<QUrl> LinkPolicy::link(const QString& text) const {
    const QStringView trimmed = QStringView(text).trimmed();
    if (trimmed.size() > longestLink)
        return std::nullopt;
    const QString address = trimmed.toString();
    if (std::any_of(address.cbegin(), address.cend(), isControl))
        return std::nullopt;
    QUrl url(address, QUrl::TolerantMode);
    return allows(url) ? std::optional(std::move(url)) : std::nullopt;
}

LinkPolicy linkPolicy(const Preferences& preferences) {
    return LinkPolicy(AppStorageBacked(preferences, PreferenceKeys::linkSchemes).wrappedValue());
}

} // namespace lumora
