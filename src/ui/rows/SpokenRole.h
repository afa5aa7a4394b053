#pragma once

namespace lumora {

/// What a widget is to those who hear the panel instead of seeing it.
enum class SpokenRole {
    Text,   ///< something to read
    Alert,  ///< read out as it appears
    Group,  ///< widgets that belong together, in reading order
    Window, ///< what all of it is in
};

/// A widget that says itself what it is to screen readers.
class Spoken {
public:
    virtual ~Spoken() = default;

    virtual SpokenRole spokenRole() const = 0;
};

/// The base that makes a widget, and all that derive from it, a `role`.
template <SpokenRole role>
class SpokenAs : public Spoken {
public:
    SpokenRole spokenRole() const override { return role; }
};

} // namespace lumora
