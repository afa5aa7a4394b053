#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

using Server = TestCertificates::Server;

/// A good service behind TLS.
Fault good(Server certificate = Server::Valid) {
    return overTls(isWell(), certificate);
}

/// The same, which speaks one version of TLS alone.
Fault only(const QByteArray& tlsVersion) {
    Fault fault = good();
    fault.tlsVersion = tlsVersion;
    return fault;
}

Fault untrusted() {
    Fault fault = good();
    fault.isTrusted = false;
    return fault;
}

Fault wantsCertificate(const QByteArray& tlsVersion) {
    Fault fault = only(tlsVersion);
    fault.wantsCertificate = true;
    return fault;
}

} // namespace

std::vector<FaultRow> encryptionRows() {
    const QString tls = u"https://127.0.0.1:%1/"_s;
    const QByteArray alert = QByteArray::fromHex("15030300020250"); // internal_error
    return {
        {"TLS", loaded(), 1, 1, good()},
        {"TLS 1.2 alone", loaded(), 1, 1, only("TLSv1.2")},
        {"TLS 1.3 alone", loaded(), 1, 1, only("TLSv1.3")},
        {"TLS 1.1 alone", noHandshake(u"tlsv1 alert protocol version"_s), 3, 0, only("TLSv1.1")},
        {"TLS 1.0 alone", noHandshake(u"tlsv1 alert protocol version"_s), 3, 0, only("TLSv1")},

        {"an expired certificate", noHandshake(u"certificate has expired"_s), 3, 0,
         good(Server::Expired)},
        {"a certificate of the future", noHandshake(u"certificate is not yet valid"_s), 3, 0,
         good(Server::NotYetValid)},
        {"a certificate of its own", noHandshake(u"self-signed certificate"_s), 3, 0,
         good(Server::SelfSigned)},
        {"an unknown authority", noHandshake(u"unable to get local issuer certificate"_s), 3, 0,
         untrusted()},
        {"a certificate for another host",
         noHandshake(u"no alternative certificate subject name matches target '127.0.0.1'"_s), 3, 0,
         good(Server::OtherHost)},
        {"a weak key", noHandshake(u"EE certificate key too weak"_s), 3, 0, good(Server::WeakKey)},
        {"a weak digest", noHandshake(u"CA signature digest algorithm too weak"_s), 3, 0,
         good(Server::WeakDigest)},
        {"a service that wants a certificate", closed(), 3, 0, wantsCertificate("TLSv1.3")},
        {"an old service that wants a certificate", noHandshake(), 3, 0,
         wantsCertificate("TLSv1.2")},

        {"HTTP at a TLS port", noHandshake(u"wrong version number"_s), 3, 0,
         at(tls, whenSpokenTo(answers("400 Bad Request")))},
        {"TLS at a plain port", closed(), 3, 0, at(u"http://127.0.0.1:%1/"_s, good())},
        {"closes in the handshake", noHandshake(), 3, 0, at(tls, whenSpokenTo(says("")))},
        {"resets in the handshake", noHandshake(), 3, 0, at(tls, whenSpokenTo(saysAndResets("")))},
        {"a handshake that breaks off", noHandshake(u"tlsv1 alert internal error"_s), 3, 0,
         at(tls, whenSpokenTo(says(alert)))},
        {"nonsense in the handshake", noHandshake(u"wrong version number"_s), 3, 0,
         at(tls, whenSpokenTo(says(QByteArray(100, '\x16'))))},
        {"closes after the handshake", closed(), 3, 3, overTls(says(""))},
        {"resets after the handshake", closed(), 3, 3, overTls(saysAndResets(""))},
        {"resets a body over TLS", closed(), 3, 3,
         overTls(saysAndResets("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{"))},
        {"cuts a body without a length over TLS", closed(), 3, 3,
         overTls(saysAndResets("HTTP/1.1 200 OK\r\n\r\n{"))},
    };
}

} // namespace lumora::tests
