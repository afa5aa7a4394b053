#include "companion/agenda/JoinLink.h"

#include "companion/agenda/MeetingHosts.h"

#include <QUrlQuery>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::companion {

namespace {

// Of a text that is longer only the beginning is searched, and of an address none is opened.
constexpr qsizetype longestText = 100'000;
constexpr qsizetype longestLink = 2'000;

bool mayBeOpened(const QUrl& url, const QStringList& hosts) {
    if (!url.isValid() || url.host().isEmpty() || !url.userInfo().isEmpty())
        return false;
    return url.scheme() == u"https"_s || (url.scheme() == u"http"_s && leadsTo(url, hosts));
}

// Mail servers of companies put themselves in front of every link.
QUrl unwrapped(const QUrl& url) {
    if (!isWithin(url.host().toLower(), u"safelinks.protection.outlook.com"))
        return url;
    const QUrl inner(QUrlQuery(url).queryItemValue(u"url"_s, QUrl::FullyDecoded), QUrl::StrictMode);
    return inner.isValid() ? inner : url;
}

std::optional<QUrl> openable(const QString& text, const QStringList& hosts) {
    const QString written = text.trimmed();
    if (written.isEmpty() || written.size() > longestLink)
        return std::nullopt;
    const QUrl url = unwrapped(QUrl(written, QUrl::StrictMode));
    return mayBeOpened(url, hosts) ? std::optional(url) : std::nullopt;
}

bool isKnown(const QUrl& url, const QStringList& hosts) {
    return isMeetingService(url) || leadsTo(url, hosts);
}

// What ends a link in a text, where it is not blanked out.
bool endsLink(QChar character) {
    return character.isSpace() || u"<>\"'`|\\^{}"_s.contains(character) ||
           character.category() == QChar::Other_Control;
}

// A sentence and its brackets go on behind the link.
QStringView withoutClosing(QStringView link) {
    while (!link.isEmpty()) {
        const QChar last = link.back();
        const bool isUnopened =
            (last == u')' && !link.contains(u'(')) || (last == u']' && !link.contains(u'['));
        if (!isUnopened && !u".,;:!?"_s.contains(last))
            break;
        link.chop(1);
    }
    return link;
}

// The first link in a text to where meetings are joined.
std::optional<QUrl> knownLinkIn(QStringView text, const QStringList& hosts) {
    text = text.first(std::min(text.size(), longestText));
    for (qsizetype at = 0; (at = text.indexOf(u"http", at, Qt::CaseInsensitive)) >= 0;) {
        const auto end = std::find_if(text.begin() + at, text.end(), endsLink);
        const QStringView link = text.sliced(at, end - text.begin() - at);
        at += std::max(link.size(), qsizetype{1});
        if (link.size() > longestLink)
            continue;
        const auto url = openable(withoutClosing(link).toString(), hosts);
        if (url && isKnown(*url, hosts))
            return url;
    }
    return std::nullopt;
}

// Addresses in attributes have their ampersands written out.
QString withoutEntities(QString html) {
    return html.replace(u"&amp;"_s, u"&"_s);
}

} // namespace

std::optional<QUrl> joinLink(const LinkTexts& texts, const QStringList& hosts) {
    for (const QString& conference : texts.conferences) {
        if (const auto url = openable(conference, hosts))
            return url;
    }
    for (const QString& made : {texts.google, texts.teams, texts.outlook}) {
        if (const auto url = openable(made, hosts))
            return url;
    }
    if (const auto url = openable(texts.url, hosts); url && isKnown(*url, hosts))
        return url;
    if (const auto url = knownLinkIn(texts.location, hosts))
        return url;
    if (const auto url = openable(texts.location, hosts))
        return url;
    if (const auto url = knownLinkIn(texts.description, hosts))
        return url;
    return knownLinkIn(
        withoutEntities(texts.html.first(std::min(texts.html.size(), longestText))), hosts);
}

} // namespace lumora::companion
