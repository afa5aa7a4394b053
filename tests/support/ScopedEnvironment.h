#pragma once

#include <QByteArray>

#include <optional>

namespace lumora::tests {

/// Sets an environment variable, or takes it away when `value` is absent, and restores it with its
/// own end.
class ScopedEnvironment {
public:
    ScopedEnvironment(QByteArray name, std::optional<QByteArray> value)
        : m_name(std::move(name)) {
        if (qEnvironmentVariableIsSet(m_name.constData()))
            m_before = qgetenv(m_name.constData());
        set(value);
    }

    ~ScopedEnvironment() { set(m_before); }

    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    void set(const std::optional<QByteArray>& value) const {
        if (value)
            qputenv(m_name.constData(), *value);
        else
            qunsetenv(m_name.constData());
    }

    QByteArray m_name;
    std::optional<QByteArray> m_before;
};

} // namespace lumora::tests
