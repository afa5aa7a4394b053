#pragma once

#include <QByteArray>

namespace lumora {

/// Whether `body` is a web page, as a proxy or a service answers with that wants a log-in first.
[[nodiscard]] inline bool isHtmlPage(const QByteArray& body) {
    const QByteArray beginning = body.left(1024).trimmed().toLower();
    return beginning.startsWith("<!doctype html") || beginning.startsWith("<html");
}

} // namespace lumora
