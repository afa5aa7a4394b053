#include "linux/appearance/JoinedAppearance.h"

#include <utility>

namespace lumora {

namespace {

template <typename Wish>
void takeIfAbsent(std::optional<Wish>& wish, const std::optional<Wish>& other) {
    if (!wish)
        wish = other;
}

} // namespace

JoinedAppearance::JoinedAppearance(std::vector<std::unique_ptr<DesktopAppearance>> sources)
    : m_sources(std::move(sources)) {
    for (const auto& source : m_sources)
        connect(source.get(), &DesktopAppearance::changed, this, &JoinedAppearance::join);
    join();
}

void JoinedAppearance::join() {
    Wishes wishes;
    for (const auto& source : m_sources) {
        takeIfAbsent(wishes.colorScheme, source->wishes().colorScheme);
        takeIfAbsent(wishes.font, source->wishes().font);
        takeIfAbsent(wishes.animations, source->wishes().animations);
        takeIfAbsent(wishes.accent, source->wishes().accent);
    }
    setWishes(wishes);
}

} // namespace lumora
