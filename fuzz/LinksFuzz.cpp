// A link that is let through is one that may be opened, whatever was allowed besides; and the token
// goes where the briefing comes from, over TLS or to this computer.
//
// The input is the text of a link or an endpoint, byte 255, and the names of further schemes.

#include "Expectations.h"
#include "Input.h"
#include "Targets.h"
#include "platform/LinkPolicy.h"
#include "service/EndpointPolicy.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::fuzz {

namespace {

bool readsFilesOrRunsCode(const QString& scheme) {
    static const QStringList schemes{u"file"_s, u"javascript"_s,  u"data"_s, u"vbscript"_s,
                                     u"qrc"_s,  u"view-source"_s, u"jar"_s,  u"blob"_s};
    return schemes.contains(scheme, Qt::CaseInsensitive);
}

void expectLink(const LinkPolicy& links, const QUrl& url, const QString& further) {
    expect(url.isValid() && links.allows(url), "an address that may be opened");
    expect(!url.isRelative(), "an address with a scheme");
    expect(!readsFilesOrRunsCode(url.scheme()), "no link to a file or to code");
    if (url.scheme() == u"http" || url.scheme() == u"https")
        expect(!url.host().isEmpty(), "a link to some host");
    else if (!LinkPolicy().allows(url))
        expect(further.toLower().contains(url.scheme()), "a scheme that was allowed by name");
    const QByteArray encoded = url.toEncoded();
    expectGraphic(encoded);
    const auto again = links.link(QString::fromLatin1(encoded));
    expect(again && again->scheme() == url.scheme(), "the link to be one when it is written anew");
    expect(again->host() == url.host(), "the same host when it is written anew");
}

bool isThisComputer(const QString& host) {
    return host.toLower() == u"localhost" || host == u"::1" || host.startsWith(u"127."_s);
}

void expectEndpoint(const QString& text) {
    const auto url = parseEndpoint(text);
    if (!url || !checkTokenMayGoTo(*url))
        return;
    expect(
        url->scheme() == u"https" || (url->scheme() == u"http" && isThisComputer(url->host())),
        "a way on which the token is safe");
    const auto action = parseEndpoint(actionEndpoint(text));
    if (!action)
        return;
    expect(
        action->scheme() == url->scheme() && action->host() == url->host() &&
            action->port() == url->port(),
        "actions to go where the briefing comes from");
    expect(checkTokenMayGoTo(*action).has_value(), "a way for actions on which the token is safe");
}

} // namespace

void links(QByteArrayView input) {
    Input values(input);
    const QString text = values.text();
    const QString further = values.text();
    const LinkPolicy links(further);
    if (const auto url = links.link(text))
        expectLink(links, *url, further);
    expectEndpoint(text);
}

} // namespace lumora::fuzz
