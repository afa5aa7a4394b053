#include "linux/session/SpareMemory.h"

#include <QFile>

#include <gtest/gtest.h>

#include <memory>
#include <thread>
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

/// Uses much memory and frees it but for what comes last. In pages, what is used after that, and
/// the `much` of it that lies spare.
class SpareMemoryTest : public testing::Test {
protected:
    static constexpr qint64 blocks = 200'000;
    static constexpr qint64 blockBytes = 100;
    static constexpr qint64 pageBytes = 4096;
    static constexpr qint64 much = blocks * blockBytes / pageBytes;

    void SetUp() override {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer has an allocator of its own";
#endif
    }

    static std::vector<std::unique_ptr<char[]>> takeMuch() {
        std::vector<std::unique_ptr<char[]>> many;
        for (qint64 count = 0; count < blocks; ++count)
            many.push_back(std::make_unique<char[]>(blockBytes));
        return many;
    }

    qint64 afterMuchWasFreed() {
        auto many = takeMuch();
        m_kept.push_back(std::make_unique<char[]>(blockBytes));
        many.clear();
        return residentMemory();
    }

private:
    std::vector<std::unique_ptr<char[]>> m_kept;
};

} // namespace

TEST_F(SpareMemoryTest, GoesBackAlthoughSomethingBehindItIsKept) {
    const qint64 before = afterMuchWasFreed();
    returnSpareMemory();
    EXPECT_LT(residentMemory(), before - much / 2);
}

TEST_F(SpareMemoryTest, GoesBackAgainAfterItWasUsedAgain) {
    for (int turn = 0; turn < 3; ++turn) {
        const qint64 before = afterMuchWasFreed();
        returnSpareMemory();
        EXPECT_LT(residentMemory(), before - much / 2) << turn;
    }
}

TEST_F(SpareMemoryTest, WhatAThreadHasFreedGoesBackToo) {
    shareMemoryAmongThreads();
    // From now on the allocator finds less than twice that not worth giving back by itself.
    std::make_unique<char[]>(blocks * blockBytes).reset();

    const qint64 before = residentMemory();
    std::thread([] { takeMuch(); }).join();
    returnSpareMemory();
    EXPECT_LT(residentMemory(), before + much / 2);
}
