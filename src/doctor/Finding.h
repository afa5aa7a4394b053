#pragma once

#include <QString>

namespace lumora {

/// What was found of one link of the chain between the service and the screen.
struct Finding {
    enum class Verdict {
        Ok,
        Warning,  ///< it works, or is done without
        Failed,   ///< nothing behind it can work
        NotTried, ///< because of one before it
    };

    QString link; ///< its name
    Verdict verdict = Verdict::Ok;
    QString found;  ///< for people, on one line; empty where it was not tried
    QString remedy; ///< what helps; empty where nothing has to

    static Finding ok(const QString& link, const QString& found) {
        return {link, Verdict::Ok, found, {}};
    }

    static Finding warning(const QString& link, const QString& found, const QString& remedy) {
        return {link, Verdict::Warning, found, remedy};
    }

    static Finding failed(const QString& link, const QString& found, const QString& remedy) {
        return {link, Verdict::Failed, found, remedy};
    }

    static Finding notTried(const QString& link) { return {link, Verdict::NotTried, {}, {}}; }

    bool operator==(const Finding&) const = default;
};

} // namespace lumora
