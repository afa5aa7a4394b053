#include "faults/Behaviours.h"
#include "faults/FaultTable.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

namespace {

/// A proxy that does as asked; the service behind it does what `fault` does.
Fault tunnelTo(
    Fault fault, TestCertificates::Server certificate = TestCertificates::Server::OtherHost) {
    fault.door = Fault::Door::Tunnel;
    fault.certificate = certificate;
    return byProxy(std::move(fault));
}

Fault bySocks(Fault fault) {
    return byProxy(atOnce(std::move(fault)), u"socks5h://127.0.0.1:%1"_s);
}

FetchEnd proxySaid(int status) {
    return failed(u"The proxy answered %1"_s.arg(status));
}

} // namespace

std::vector<FaultRow> proxyRows() {
    const QByteArray established = "HTTP/1.1 200 Connection established\r\n\r\n";
    return {
        {"a proxy", loaded(), 1, 2, tunnelTo(isWell())},
        {"a proxy to a service that fails", serverError(503), 3, 6, tunnelTo(answers("503 Busy"))},
        {"a proxy to another service",
         noHandshake(u"no alternative certificate subject name matches target 'service.invalid'"_s),
         3, 3, tunnelTo(answers("200 OK"), TestCertificates::Server::Valid)},

        {"no proxy there", failed(u"Connection refused"_s), 3, 0, byProxy(nobody())},
        {"a proxy that nobody knows", failed(u"Proxy not found"_s), 3, 0,
         byProxy(nobody(), u"http://nobody.invalid:3128"_s)},
        {"a proxy that is no address", failed(u"Proxy not found"_s), 3, 0,
         byProxy(nobody(), u"http://"_s)},
        {"a proxy that wants a password", proxySaid(407), 3, 3,
         byProxy(answers(
             "407 Proxy Authentication Required", "",
             "Proxy-Authenticate: Basic realm=\"x\"\r\n"))},
        {"a proxy that forbids", proxySaid(403), 3, 3,
         byProxy(answers("403 Forbidden", "<html>no</html>"))},
        {"a proxy that is busy", proxySaid(503), 3, 3, byProxy(answers("503 Busy"))},
        {"a proxy that reaches nobody", proxySaid(502), 3, 3, byProxy(answers("502 Bad Gateway"))},
        {"a proxy that waits in vain", proxySaid(504), 3, 3,
         byProxy(answers("504 Gateway Timeout"))},
        {"a proxy that redirects", proxySaid(302), 3, 3,
         byProxy(answers("302 Found", "", "Location: http://127.0.0.1:1/\r\n"))},
        {"a proxy that speaks nonsense", closed(), 3, 3, byProxy(says("nonsense\r\n\r\n"))},
        {"a proxy that speaks something else", timedOut(), 3, 3,
         byProxy(saysAndWaits("SSH-2.0-OpenSSH_9.2p1\r\n"))},
        {"a proxy that closes at once", closed(), 3, 0, byProxy(atOnce(says("")))},
        {"a proxy that resets at once", closed(), 3, 0, byProxy(atOnce(saysAndResets("")))},
        {"a proxy that closes unanswered", closed(), 3, 3, byProxy(says(""))},
        {"a proxy that closes in the head", closed(), 3, 3, byProxy(says("HTTP/1.1 200 OK\r\nX-"))},
        {"a proxy that hangs", timedOut(), 3, 3, byProxy(saysAndWaits(""))},
        {"a proxy that hangs in the head", timedOut(), 3, 3,
         byProxy(saysAndWaits("HTTP/1.1 200 OK\r\nX-"))},
        {"a proxy that drips its head", timedOut(), 3, 3,
         byProxy(drips("HTTP/1.1 200 OK\r\n", "X-Filler: x\r\n"))},
        {"a proxy whose head has no end", invalid(), 1, 1,
         byProxy(floods("HTTP/1.1 200 OK\r\n", "X-Filler: x\r\n"))},
        {"a proxy whose header has no end", invalid(), 1, 1,
         byProxy(floods("HTTP/1.1 200 OK\r\nX-Filler: ", "x"))},
        {"a proxy whose refusal has no end", proxySaid(403), 3, 3,
         byProxy(floods("HTTP/1.1 403 Forbidden\r\n\r\n", " "))},
        {"a proxy whose interim answers have no end", proxySaid(103), 3, 3,
         byProxy(floods("", "HTTP/1.1 103 Early Hints\r\n\r\n"))},
        {"a proxy that closes the tunnel", noHandshake(), 3, 3, byProxy(says(established))},
        {"a proxy that says nothing in the tunnel", timedOut(), 3, 3,
         byProxy(saysAndWaits(established))},
        {"a proxy that speaks nonsense in the tunnel", noHandshake(u"wrong version number"_s), 3, 3,
         byProxy(says(established + "nonsense, and not TLS"))},
        {"a proxy that floods the tunnel", noHandshake(u"wrong version number"_s), 3, 3,
         byProxy(floods(established, "nonsense"))},

        {"a SOCKS proxy that is none", failed(u"The proxy made no connection"_s), 3, 0,
         bySocks(saysAndWaits("HTTP/1.1 400 Bad Request\r\n\r\n"))},
        {"a SOCKS proxy that wants a password", failed(u"The proxy made no connection"_s), 3, 0,
         bySocks(saysAndWaits("\x05\xff"))},
        {"a SOCKS proxy that refuses", failed(u"The proxy made no connection"_s), 3, 0,
         bySocks(saysAndWaits(QByteArray("\x05\x00\x05\x05\x00\x01\0\0\0\0\0\0", 12)))},
        {"a SOCKS proxy that closes", failed(u"The proxy made no connection"_s), 3, 0,
         bySocks(says(""))},
        {"a SOCKS proxy that hangs", timedOut(), 3, 0, bySocks(saysAndWaits(""))},
        {"a SOCKS proxy that hangs when asked", timedOut(), 3, 0,
         bySocks(saysAndWaits(QByteArray("\x05\x00", 2)))},
        {"an older SOCKS proxy that refuses", failed(u"The proxy made no connection"_s), 3, 0,
         byProxy(
             atOnce(saysAndWaits(QByteArray("\x00\x5b\0\0\0\0\0\0", 8))),
             u"socks4a://127.0.0.1:%1"_s)},
        {"a proxy behind TLS that nobody trusts", noHandshake(u"certificate has expired"_s), 3, 0,
         byProxy(
             overTls(answers("200 OK"), TestCertificates::Server::Expired),
             u"https://127.0.0.1:%1"_s)},
        {"TLS wanted of a proxy that has none", noHandshake(u"wrong version number"_s), 3, 0,
         byProxy(whenSpokenTo(answers("200 OK")), u"https://127.0.0.1:%1"_s)},
    };
}

} // namespace lumora::tests
