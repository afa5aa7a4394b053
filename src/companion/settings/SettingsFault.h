#pragma once

#include <QString>

namespace lumora::companion {

/// What is wrong with the configuration at one place.
struct SettingsFault {
    int line = 0;    ///< from 1; 0: no line in particular
    QString message; ///< names the key: "[[habit]] name: must be a text"

    /// "line 3: [[habit]] name: must be a text"
    [[nodiscard]] QString text() const;

    bool operator==(const SettingsFault&) const = default;
};

} // namespace lumora::companion
