#pragma once

#include <unistd.h>

namespace lumora::tests {

/// Takes the superuser's privileges away for a while; does nothing for anybody else.
class OrdinaryUser {
public:
    OrdinaryUser() { m_changed = geteuid() == 0 && seteuid(65534) == 0; }

    ~OrdinaryUser() { m_changed = m_changed && seteuid(0) != 0; }

private:
    bool m_changed;
};

} // namespace lumora::tests
