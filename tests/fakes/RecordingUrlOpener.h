#pragma once

#include "platform/UrlOpener.h"

#include <QList>

namespace lumora::tests {

/// Opens nothing, remembers everything.
class RecordingUrlOpener final : public UrlOpener {
public:
    void open(const QUrl& url, const QByteArray& activationToken) override {
        opened += url;
        tokens += activationToken;
    }

    QList<QUrl> opened;
    QList<QByteArray> tokens;
};

} // namespace lumora::tests
