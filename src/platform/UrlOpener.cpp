#include "platform/UrlOpener.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

bool isSafeLink(const QUrl& url) {
    static const QStringList refused{u"file"_s, u"javascript"_s, u"data"_s};
    return url.isValid() && !url.scheme().isEmpty() && !refused.contains(url.scheme());
}

std::optional<QUrl> safeLink(const QString& text) {
    QUrl url(text, QUrl::StrictMode);
    return isSafeLink(url) ? std::optional(std::move(url)) : std::nullopt;
}

} // namespace lumora
