#include "cli/StandardInput.h"

#include <array>
#include <cstdio>

namespace lumora {

QByteArray standardInput(qsizetype longest) {
    QByteArray bytes;
    std::array<char, 4096> part; // NOLINT(*-member-init): written before it is read
    std::size_t size = 0;
    while (bytes.size() <= longest && (size = std::fread(part.data(), 1, part.size(), stdin)) > 0)
        bytes.append(part.data(), qsizetype(size));
    return bytes;
}

} // namespace lumora
