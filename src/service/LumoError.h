#pragma once

#include <QString>

namespace lumora {

/// A failed exchange with the dashboard service. Carries its own text for the user.
class LumoError {
public:
    enum class Kind {
        NetworkError,
        ServerError,
        ActionRejected,
        NotConfigured,
        InvalidURL,
        Unauthorized,
        InvalidResponse,
    };

    /// The exchange broke off; `description` is the transport's own text.
    static LumoError networkError(QString description);
    /// A networkError of an exchange that was refused here, before anything was sent, and would be
    /// refused again.
    static LumoError refused(QString description);
    /// An HTTP status that is no success and has no kind of its own.
    static LumoError serverError(int status);
    /// The server refused with a message for the user.
    static LumoError actionRejected(QString message);
    static LumoError notConfigured();
    static LumoError invalidURL();
    static LumoError unauthorized();
    static LumoError invalidResponse();

    Kind kind() const { return m_kind; }

    /// True for failures that may pass: an exchange that was begun and broke off, status 429, and
    /// status 500 or above.
    bool isRetryable() const;

    /// What the user reads, as it stands.
    QString errorDescription() const;

    bool operator==(const LumoError&) const = default;

private:
    explicit LumoError(Kind kind, QString text = {}, int status = 0);

    Kind m_kind;
    QString m_text;   ///< of NetworkError and ActionRejected
    int m_status = 0; ///< of ServerError
    bool m_wasSent = true;
};

} // namespace lumora
