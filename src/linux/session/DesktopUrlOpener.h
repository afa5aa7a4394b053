#pragma once

#include "platform/UrlOpener.h"

#include <QProcessEnvironment>
#include <QString>

namespace lumora {

/// Opens addresses through the desktop's own handlers, never through a shell.
class DesktopUrlOpener final : public UrlOpener {
public:
    struct Options {
        QString platform;                ///< the toolkit's plug-in for the window system
        bool hasLayer = false;           ///< whether the panel goes into a layer
        QProcessEnvironment environment; ///< for what is started here
    };

    explicit DesktopUrlOpener(Options options);

    void open(const QUrl& url, const QByteArray& activationToken) override;

private:
    bool isForToolkit(const QByteArray& activationToken) const;
    bool start(const QUrl& url, const QByteArray& activationToken) const;

    Options m_options;
};

} // namespace lumora
