#include "linux/session/SpareMemory.h"

#include <QFile>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace lumora;
using namespace Qt::Literals::StringLiterals;

namespace {

/// In pages.
qint64 residentMemory() {
    QFile file(u"/proc/self/statm"_s);
    EXPECT_TRUE(file.open(QFile::ReadOnly));
    return file.readAll().split(' ').value(1).toLongLong();
}

} // namespace

TEST(SpareMemory, GoesBackAlthoughSomethingBehindItIsKept) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has an allocator of its own";
#endif
    constexpr int blocks = 200'000;
    constexpr int blockBytes = 100;
    constexpr int pageBytes = 4096;
    std::vector<std::unique_ptr<char[]>> many;
    for (int count = 0; count < blocks; ++count)
        many.push_back(std::make_unique<char[]>(blockBytes));
    const auto kept = std::make_unique<char[]>(blockBytes);
    many.clear();
    const qint64 before = residentMemory();
    returnSpareMemory();
    EXPECT_LT(residentMemory(), before - qint64{blocks} * blockBytes / 2 / pageBytes);
}
