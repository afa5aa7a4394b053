#include "support/Fixtures.h"
#include "support/ProgramHarness.h"
#include "support/RealKeyring.h"
#include "support/ScriptedServer.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace lumora::tests;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Somebody who writes a service.
class Check : public testing::Test {
protected:
    Check() {
        lumora.setVariable(u"TZ"_s, u"UTC"_s);
        lumora.setVariable(u"LC_ALL"_s, u"C.UTF-8"_s);
    }

    QString write(const QByteArray& bytes) {
        QFile file(folder.filePath(u"briefing.json"_s));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    ProgramHarness::Outcome check(const QString& source) {
        return lumora.run({u"check"_s, source, u"--now"_s, u"2025-03-04T09:20:00Z"_s});
    }

    void expectFault(const QByteArray& bytes, const QByteArray& fault) {
        const QString path = write(bytes);
        const auto outcome = check(path);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "lumora: " + path.toUtf8() + ": " + fault + '\n');
    }

    const QByteArray minimal = fixture(u"briefing-minimal.json"_s);
    const QByteArray full = fixture(u"briefing-full.json"_s);
    ProgramHarness lumora;
    QTemporaryDir folder;
};

} // namespace

TEST_F(Check, PrintsWhatWouldBeShown) {
    const auto outcome = check(write(full));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.err, "");
    for (const char* heading :
         {"Briefing: of ",
          "\nLabel:    ", "\nTooltip:  ", "\nEvents: ", "\nHabits: ", "\nChores: ", "\nSpending: "})
        EXPECT_TRUE(outcome.out.contains(heading)) << heading;
    EXPECT_TRUE(outcome.out.contains("Updated just now"));
    for (const char* amount : {"1234", "1,234", "410", "1100"})
        EXPECT_FALSE(outcome.out.contains(amount)) << amount;
    EXPECT_EQ(check(write(minimal)).exitCode, 0);
    EXPECT_TRUE(lumora.filesAtHome().isEmpty());
}

TEST_F(Check, NamesTheFirstFault) {
    expectFault(QByteArray(full).replace("\"chores\"", "\"tasks\""), "chores: Missing");
    expectFault(
        "<!doctype HTML><p>Log in", "It is an HTML page, such as for logging in, and no JSON");
    EXPECT_EQ(check(write("{")).exitCode, 1);
    const auto absent = check(u"/nonexistent/file"_s);
    EXPECT_EQ(absent.exitCode, 1);
    EXPECT_EQ(absent.err, "lumora: /nonexistent/file: No such file or directory\n");
}

TEST_F(Check, ReadsStandardInput) {
    const auto process = lumora.makeProcess();
    process->setStandardInputFile(write(full));
    process->setArguments({u"check"_s, u"-"_s});
    process->start();
    EXPECT_EQ(ProgramHarness::finish(*process).exitCode, 0);
}

TEST_F(Check, TellsTheTokenOnlyToTheUsersOwnService) {
    RealKeyring keyring(lumora.sessionBus());
    keyring.startUnlocked();
    ASSERT_TRUE(storeToken(keyring, "a token"));
    const auto script = ScriptedServer::always(ScriptedServer::answer("200 OK", full));
    const ScriptedServer own(script);
    const ScriptedServer other(script);
    lumora.writePreferences({{u"endpointURL"_s, own.url(u"/api/briefing"_s).toString()}});
    EXPECT_EQ(check(own.url(u"/next"_s).toString()).exitCode, 0);
    EXPECT_EQ(check(other.url(u"/next"_s).toString()).exitCode, 0);
    EXPECT_EQ(header(own.requests().value(0), "X-Api-Key"), "a token");
    EXPECT_TRUE(other.requests().value(0).startsWith("GET /next "));
    EXPECT_FALSE(header(other.requests().value(0), "X-Api-Key"));
}

TEST_F(Check, SaysWhatAnAddressAnswersInstead) {
    const ScriptedServer refusing(
        ScriptedServer::always(ScriptedServer::answer("401 Unauthorized", "{}")));
    const QString address = refusing.url(u"/"_s).toString();
    const auto outcome = check(address);
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "lumora: " + address.toUtf8() + ": The answer has the status 401\n");
}

TEST_F(Check, NeedsArgumentsThatMakeSense) {
    for (const QString& arguments :
         {u"check"_s, u"check a b"_s, u"check --now"_s, u"check a --now yesterday"_s,
          u"check a --then b"_s, u"doctor x"_s, u"doctor --json x"_s}) {
        const auto outcome = lumora.run(arguments.split(u' '));
        EXPECT_EQ(outcome.exitCode, 2) << arguments.toStdString();
        EXPECT_EQ(outcome.err.count('\n'), 1);
    }
}
