#include "faults/program/FaultyProgram.h"
#include "support/Patience.h"
#include "support/PrivateMemory.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <iostream>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What may be left when all is over, in KiB.
constexpr qint64 toleratedMemory = 2 * 1024;

/// Far longer than anything that holds up the program, on however busy a machine and under the
/// sanitizers; and yet shorter than anybody waits for an answer. In milliseconds.
constexpr qint64 longestAnswer = 5000;

/// A user whose service sends more than anybody needs.
class ProgramExcess : public FaultyProgram {
protected:
    /// Fetches twice at least from the row's service, and asks meanwhile what is shown.
    void fetch(const char* row) {
        goTo(service.begin(faultRow(row)).endpoint);
        const auto refresh = lumora.makeProcess();
        refresh->setArguments({u"refresh"_s});
        refresh->start();
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                ask();
                return refresh->state() == QProcess::NotRunning;
            },
            patience));
        EXPECT_GE(service.count().requests, 1) << row;
    }

    void ask() {
        QElapsedTimer waited;
        waited.start();
        EXPECT_FALSE(lumora.status().isEmpty());
        slowestAnswer = std::max(slowestAnswer, waited.elapsed());
    }

    qint64 memory() { return privateMemory(lumora.program().processId()); }

    qint64 slowestAnswer = 0; ///< in milliseconds
};

} // namespace

TEST_F(ProgramExcess, KeepsNobodyWaitingAndIsGivenBack) {
    standBy(faultRow("HTML"));
    goTo(service.goodEndpoint());
    lumora.start();
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    fetch("HTML");
    fetch("201");
    const qint64 before = memory();

    for (const char* const row :
         {"16 MiB of blanks and a briefing", "16 MiB and a byte", "16 MiB and a byte in chunks",
          "16 MiB of nonsense", "16 MiB of lists in lists", "16 MiB of objects in objects",
          "16 MiB of quotes", "16 MiB of digits", "16 MiB of empty lists", "a header without end",
          "a chunk's extension without end", "chunks without end", "a huge text"})
        fetch(row);
    EXPECT_LT(slowestAnswer, longestAnswer);
    fetch("201");
    ASSERT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    if (memoryIsMeasurable) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return memory() < before + toleratedMemory; }, patience));
    }
    std::cout << "Answered within " << slowestAnswer << " ms. Private memory: " << before
              << " KiB before, " << memory() << " KiB after\n";
}
