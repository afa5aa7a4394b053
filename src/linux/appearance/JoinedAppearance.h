#pragma once

#include "platform/DesktopAppearance.h"

#include <memory>
#include <vector>

namespace lumora {

/// What several sources say together. Of each wish the first source that states it is believed.
class JoinedAppearance final : public DesktopAppearance {
    Q_OBJECT

public:
    explicit JoinedAppearance(std::vector<std::unique_ptr<DesktopAppearance>> sources);

private:
    void join();

    std::vector<std::unique_ptr<DesktopAppearance>> m_sources;
};

} // namespace lumora
