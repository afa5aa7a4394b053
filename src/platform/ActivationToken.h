#pragma once

#include <QByteArray>

namespace lumora {

/// The activation token that this process was started with, which lets its window come to the
/// front; empty without one. The toolkit takes it out of the environment when it starts.
[[nodiscard]] QByteArray inheritedActivationToken();

/// Puts an activation token where the toolkit looks for it when a window asks for the front, and
/// where started programs find theirs: into the environment, for as long as the object lives.
/// Nobody finds one there afterwards.
class ActivationTokenScope {
public:
    /// An empty `token` stands for none.
    explicit ActivationTokenScope(const QByteArray& token);
    ~ActivationTokenScope();
    ActivationTokenScope(const ActivationTokenScope&) = delete;
    ActivationTokenScope& operator=(const ActivationTokenScope&) = delete;
};

} // namespace lumora
