#pragma once

#include <sys/resource.h>

#include <csignal>

namespace lumora::tests {

/// Lets no file grow beyond so many bytes, as long as it lives: what is beyond cannot be written,
/// as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes = 0) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    void (*m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit m_before{};
};

} // namespace lumora::tests
