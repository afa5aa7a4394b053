#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>

namespace lumora::companion {

/// Whether `host` is `domain` or one of its subdomains; both in small letters.
[[nodiscard]] bool isWithin(const QString& host, QStringView domain);

/// Whether `url` leads to one of `hosts`, or of their subdomains.
[[nodiscard]] bool leadsTo(const QUrl& url, const QStringList& hosts);

/// Whether people join meetings at `url`: one of the services that everybody knows.
[[nodiscard]] bool isMeetingService(const QUrl& url);

} // namespace lumora::companion
