#pragma once

#include <QByteArray>
#include <QProcessEnvironment>

namespace lumora {

/// The activation token that this process was started with, which lets its window come to the
/// front; empty without one. The toolkit takes it out of the environment when it starts.
[[nodiscard]] QByteArray inheritedActivationToken();

/// The environment of a program that is started with `token`, and finds everything else as it is in
/// `environment`. An empty `token` stands for none.
[[nodiscard]] QProcessEnvironment
withActivationToken(QProcessEnvironment environment, const QByteArray& token);

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
