#include "faults/program/FaultyProgram.h"
#include "support/Patience.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <iostream>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// In milliseconds: far shorter than the program waits for a name server, and for any machine long.
constexpr qint64 aMoment = 10'000;

/// A user whose name server says nothing, ever.
class HungLookUp : public FaultyProgram {
protected:
    void SetUp() override {
        FaultyProgram::SetUp();
        lumora.setVariable(u"INVENTED_NAMES_SIGN"_s, sign);
        goTo(u"https://hung.invalid/"_s);
        lumora.start();
        ASSERT_TRUE(QTest::qWaitFor([this] { return QFile::exists(sign); }, patience));
    }

    /// The program ends without waiting for the look-up.
    void expectCleanEnd() {
        QElapsedTimer elapsed;
        elapsed.start();
        const auto ended = lumora.waitForEnd();
        std::cout << "Ended after " << elapsed.elapsed() << " ms\n";
        EXPECT_LT(elapsed.elapsed(), aMoment);
        EXPECT_EQ(ended.exitCode, 0);
        EXPECT_EQ(ended.err, "");
    }

    QTemporaryDir folder;
    const QString sign = folder.filePath(u"sign"_s);
};

} // namespace

TEST_F(HungLookUp, EndsAllTheSameWhenTerminated) {
    lumora.program().terminate();
    expectCleanEnd();
}

TEST_F(HungLookUp, EndsAllTheSameWhenAskedTo) {
    EXPECT_EQ(lumora.run({u"quit"_s}).exitCode, 0);
    expectCleanEnd();
}

TEST_F(HungLookUp, AnswersMeanwhileAndFetchesFromElsewhere) {
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loading"_s}}));
    standBy(faultRow("201"));
    goTo(way.endpoint);
    EXPECT_TRUE(lumora.comesToShow({{u"state"_s, u"loaded"_s}}));
    lumora.program().terminate();
    expectCleanEnd();
}
