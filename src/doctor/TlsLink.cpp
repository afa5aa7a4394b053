#include "doctor/Links.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Certificate = ServiceProbe::Certificate;

QString remedyFor(Certificate certificate) {
    switch (certificate) {
    case Certificate::Expired:
        return u"Renew the service's certificate; if it is new, set this computer's clock"_s;
    case Certificate::NotYetValid:
        return u"Set this computer's clock, or wait for the certificate's first day"_s;
    case Certificate::Untrusted:
        return u"Install the authority's certificate, or name its file in SSL_CERT_FILE"_s;
    case Certificate::OtherName:
        return u"Use the name that the certificate is for, or have one made for this name"_s;
    case Certificate::Unknown:
        return u"Have the service's certificate made anew"_s;
    case Certificate::Sound:
        break;
    }
    return u"Let the service speak TLS 1.2 or later at that port"_s;
}

QString certificateName(Certificate certificate) {
    switch (certificate) {
    case Certificate::Expired:
        return u"The certificate has expired"_s;
    case Certificate::NotYetValid:
        return u"The certificate is not valid yet"_s;
    case Certificate::Untrusted:
        return u"The certificate is by nobody whom this computer trusts"_s;
    case Certificate::OtherName:
        return u"The certificate is for another name"_s;
    case Certificate::Unknown:
    case Certificate::Sound:
        break;
    }
    return {};
}

} // namespace

Finding tlsLink(const Evidence& evidence) {
    using Stage = ServiceProbe::Stage;
    const QString link = u"TLS"_s;
    const auto way = wayTo(evidence);
    if (!way || way < Stage::Tls)
        return Finding::notTried(link);
    const auto url = serviceUrl(evidence);
    if (url && url->scheme() != u"https")
        return Finding::ok(link, u"None is needed on this computer"_s);
    if (way > Stage::Tls)
        return Finding::ok(link, u"The certificate is sound"_s);
    const ServiceProbe& service = *evidence.service;
    const QString name = certificateName(service.certificate);
    return Finding::failed(
        link, name.isEmpty() ? service.trouble : name, remedyFor(service.certificate));
}

} // namespace lumora
