#include "faults/FaultRow.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora::tests {

int FaultRow::connections() const {
    if (fault.door == Fault::Door::Closed)
        return 0;
    const bool isTunnelled = fault.door == Fault::Door::Tunnel;
    return isTunnelled ? tries : std::max(tries, requests);
}

bool FaultRow::endsByALimit() const {
    return end == timedOut();
}

bool FaultRow::canRecover() const {
    const bool isUsual = fault.certificate == TestCertificates::Server::Valid && fault.isTrusted &&
                         fault.tlsVersion.isEmpty() && !fault.wantsCertificate;
    const bool isReached = fault.proxy.isEmpty() && fault.address.contains(u"127.0.0.1"_s);
    const bool speaksAlike =
        fault.door == Fault::Door::Plain
            ? fault.address.startsWith(u"http:"_s)
            : fault.door == Fault::Door::Encrypted && fault.address.startsWith(u"https:"_s);
    return isUsual && isReached && speaksAlike;
}

FetchEnd loaded() {
    return {u"loaded"_s, std::nullopt};
}

FetchEnd failed(const QString& message) {
    return {u"failed"_s, message};
}

FetchEnd timedOut() {
    return failed(u"The request timed out"_s);
}

FetchEnd closed() {
    return failed(u"Connection closed"_s);
}

FetchEnd invalid() {
    return failed(u"Invalid response from server"_s);
}

FetchEnd serverError(int status) {
    return failed(u"Server error (%1)"_s.arg(status));
}

FetchEnd noHandshake(const QString& reason) {
    return failed(
        reason.isEmpty() ? u"SSL handshake failed"_s : u"SSL handshake failed: "_s + reason);
}

void PrintTo(const FetchEnd& end, std::ostream* out) {
    constexpr qsizetype enough = 200;
    *out << end.state.toStdString();
    if (end.message)
        *out << ": " << end.message->left(enough).toStdString();
}

void PrintTo(const FaultRow& row, std::ostream* out) {
    *out << row.name;
}

} // namespace lumora::tests
