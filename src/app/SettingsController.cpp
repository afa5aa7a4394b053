#include "app/SettingsController.h"

#include "ui/settings/SettingsWindow.h"

namespace lumora {

/// What there is from the first opening on.
struct SettingsController::Opened {
    Opened(
        const SettingsModel::Dependencies& with, const DesktopAppearance& appearance,
        const Compositing& compositing)
        : themes(appearance, compositing, qEnvironmentVariable("XDG_CURRENT_DESKTOP"))
        , model(with)
        , window(model, themes.themes()) {}

    ThemeFollower themes;
    SettingsModel model;
    SettingsWindow window;
};

SettingsController::SettingsController(
    const SettingsModel::Dependencies& dependencies, const DesktopAppearance& appearance,
    const Compositing& compositing)
    : m_with(dependencies)
    , m_appearance(appearance)
    , m_compositing(compositing) {}

SettingsController::~SettingsController() = default;

void SettingsController::open(const QByteArray& activationToken) {
    if (!m_opened)
        m_opened = std::make_unique<Opened>(m_with, m_appearance, m_compositing);
    m_opened->window.open(activationToken);
}

} // namespace lumora
