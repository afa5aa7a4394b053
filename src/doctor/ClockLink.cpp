#include "doctor/Links.h"

#include <QLocale>

#include <chrono>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using namespace std::chrono_literals;

/// More than this makes countdowns wrong.
constexpr auto largestSkew = 60s;

/// The time in an answer's head; absent where it is none.
std::optional<Instant> timeIn(const QByteArray& date) {
    const QDateTime read =
        QLocale::c().toDateTime(QString::fromLatin1(date), u"ddd, dd MMM yyyy HH:mm:ss 'GMT'"_s);
    if (!read.isValid())
        return std::nullopt;
    const QDateTime utc(read.date(), read.time(), kUtc);
    return Instant(std::chrono::milliseconds(utc.toMSecsSinceEpoch()));
}

} // namespace

Finding clockLink(const Evidence& evidence) {
    const QString link = u"clock"_s;
    if (!evidence.service || evidence.service->reached != ServiceProbe::Stage::Complete)
        return Finding::notTried(link);
    const auto theirs = timeIn(evidence.service->date);
    if (!theirs)
        return Finding::ok(link, u"The service does not tell its own"_s);
    const auto skew = std::chrono::duration_cast<std::chrono::seconds>(evidence.now - *theirs);
    if (std::chrono::abs(skew) <= largestSkew)
        return Finding::ok(link, u"It agrees with the service's"_s);
    return Finding::warning(
        link,
        u"It is %1 s %2 the service's"_s.arg(
            QString::number(std::chrono::abs(skew).count()),
            skew > 0s ? u"ahead of"_s : u"behind"_s),
        u"Have both set by the network: \"timedatectl set-ntp true\""_s);
}

} // namespace lumora
