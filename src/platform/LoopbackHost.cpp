#include "platform/LoopbackHost.h"

#include <QStringList>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// QUrl has brought every way to write an IPv4 address into four decimal numbers.
bool isLoopbackIpv4(const QString& host) {
    const QStringList octets = host.split(u'.');
    return octets.size() == 4 && octets.first() == u"127"_s &&
           std::ranges::all_of(octets, [](const QString& octet) {
               bool isNumber = false;
               return octet.toUInt(&isNumber) <= 255 && isNumber;
           });
}

} // namespace

bool isLoopbackHost(const QString& host) {
    return host.compare(u"localhost"_s, Qt::CaseInsensitive) == 0 || host == u"::1"_s ||
           isLoopbackIpv4(host);
}

} // namespace lumora
