#pragma once

#include <QStringList>
#include <QUrl>

#include <optional>

namespace lumora {

class Preferences;

/// Which of the links that came over the network may be opened: those of the web, telephone numbers
/// and those that meeting programs register. Any other scheme may start a program that the user
/// never thought of, with an argument chosen by a stranger.
class LinkPolicy {
public:
    /// `furtherSchemes` are names that may be opened as well, separated by blanks or commas. Those
    /// that read files or run code, or have another address within, are refused all the same.
    explicit LinkPolicy(const QString& furtherSchemes = {});

    /// Whether `url` may be opened. One of the web needs a host, any other at least something
    /// behind its scheme.
    [[nodiscard]] bool allows(const QUrl& url) const;

    /// The address that `text` is; absent when it is none or may not be opened. Blanks around it
    /// are dropped, and characters that belong into no address are percent-encoded: feeds are
    /// written carelessly. Control characters and such as turn the direction of writing are not
    /// carelessness, nor is an address that is too long to be handed to a program.
    [[nodiscard]] std::optional<QUrl> link(const QString& text) const;

private:
    QStringList m_further; ///< small letters
};

/// The policy that the user's preferences ask for by now.
[[nodiscard]] LinkPolicy linkPolicy(const Preferences& preferences);

} // namespace lumora
