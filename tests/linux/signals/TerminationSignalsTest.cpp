#include "linux/signals/TerminationSignals.h"

#include "support/Patience.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <csignal>

using namespace lumora;
using namespace lumora::tests;

TEST(TerminationSignals, TellsOfEachSignalThatAsksForTheEnd) {
    TerminationSignals signalsOfTheProcess;
    QSignalSpy requested(&signalsOfTheProcess, &TerminationSignals::requested);
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        ASSERT_EQ(std::raise(number), 0);
        EXPECT_TRUE(requested.wait(patience)) << number;
    }
    EXPECT_EQ(requested.count(), 3);
}

TEST(TerminationSignals, LeavesAnIgnoredSignalIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    {
        TerminationSignals signalsOfTheProcess;
        QSignalSpy requested(&signalsOfTheProcess, &TerminationSignals::requested);
        ASSERT_EQ(std::raise(SIGHUP), 0);
        ASSERT_EQ(std::raise(SIGTERM), 0); // comes second, so the other one has had its chance
        ASSERT_TRUE(requested.wait(patience));
        EXPECT_EQ(requested.count(), 1);
    }
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

TEST(TerminationSignals, RestoresWhatWasBefore) {
    {
        const TerminationSignals signalsOfTheProcess;
    }
    EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
}
