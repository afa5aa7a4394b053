#include "app/SettingsController.h"

#include "linux/session/WindowSystem.h"
#include "ui/settings/SettingsWindow.h"

namespace lumora {

/// What there is from the first opening on.
struct SettingsController::Opened {
    Opened(const SettingsModel::Dependencies& with, const ThemeSource& themes)
        : model(with)
        , window(model, themes) {}

    SettingsModel model;
    SettingsWindow window;
};

SettingsController::SettingsController(
    const SettingsModel::Dependencies& dependencies, const ThemeSource& themes)
    : m_with(dependencies)
    , m_themes(themes) {}

SettingsController::~SettingsController() = default;

void SettingsController::open(const QByteArray& activationToken) {
    if (!m_opened)
        m_opened = std::make_unique<Opened>(m_with, m_themes);
    m_opened->window.open(activationToken);
    completeStartup(activationToken);
}

} // namespace lumora
