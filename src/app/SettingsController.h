#pragma once

#include "ui/settings/SettingsModel.h"

#include <memory>

namespace lumora {

class SettingsWindow;
class ThemeSource;

/// Makes the one settings window when it is first asked for. It is closed and opened again, never
/// made twice, and keeps what became of the last test.
class SettingsController {
public:
    /// Everything must outlive the controller.
    SettingsController(const SettingsModel::Dependencies& dependencies, const ThemeSource& themes);
    ~SettingsController();
    SettingsController(const SettingsController&) = delete;
    SettingsController& operator=(const SettingsController&) = delete;

    /// Opens the window, or brings it to the front.
    void open(const QByteArray& activationToken);

private:
    struct Opened;

    SettingsModel::Dependencies m_with;
    const ThemeSource& m_themes;
    std::unique_ptr<Opened> m_opened; ///< null until first opened
};

} // namespace lumora
