#pragma once

#include "platform/LoginItemRegistry.h"

#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace lumora {

/// A piece of a text that is shown in one style.
struct TextRun {
    QString text;
    bool isCode = false; ///< something to type as it stands

    bool operator==(const TextRun&) const = default;
};

/// The intervals that the settings offer, in minutes, in the order they are offered.
inline constexpr std::array<qint64, 4> offeredRefreshMinutes{5, 10, 15, 30};

/// An interval as the settings call it, e.g. "10 minutes".
QString intervalText(qint64 minutes);

/// What became of saving the token or of a test: good news begins with "✓", bad news with "✗".
QString savedResult();
QString succeededResult(qsizetype eventCount);
QString failedResult(const QString& message);
bool isGoodNews(const QString& result);

/// What to say below a control whose preference could not be stored. `reason` is the system's own.
QString unstoredText(const QString& reason);

/// What to say below the switch; absent where there is nothing to say.
std::optional<QString> loginItemHint(LoginItemStatus status);

/// What the hint means where there are neither such folders nor such settings; absent where there
/// is no hint. `entry` is the file by which the desktop knows the login item, empty where there is
/// none; `desktop` is the session's XDG_CURRENT_DESKTOP.
std::optional<QString>
loginItemExplanation(LoginItemStatus status, const QString& entry, const QString& desktop);

/// What "keychain" means here. `keyring` is the name of the program that keeps the secrets, empty
/// where nobody knows it.
QString keychainExplanation(const QString& keyring);

/// How the token's note calls the endpoint: by its address without surrounding white space, or in
/// words when there is none.
QString endpointDescription(const QString& endpointURL);

/// Where the token is kept and sent, and how to set its counterpart.
QList<TextRun> tokenNote(const QString& endpointURL);

/// The runs' texts in one.
QString plainText(const QList<TextRun>& runs);

} // namespace lumora
