// Every target with every input that is kept for it, as the ordinary build compiles it.

#include "Targets.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <ostream>

using namespace Qt::Literals::StringLiterals;

namespace {

struct FuzzTarget {
    const char* name;
    void (*run)(QByteArrayView);

    friend void PrintTo(const FuzzTarget& target, std::ostream* out) { *out << target.name; }
};

constexpr FuzzTarget fuzzTargets[] = {
    {"agenda", lumora::fuzz::agenda},
    {"autostart", lumora::fuzz::autostart},
    {"calls", lumora::fuzz::calls},
    {"colors", lumora::fuzz::colors},
    {"configuration", lumora::fuzz::configuration},
    {"dates", lumora::fuzz::dates},
    {"decoder", lumora::fuzz::decoder},
    {"figures", lumora::fuzz::figures},
    {"label", lumora::fuzz::label},
    {"links", lumora::fuzz::links},
    {"logbook", lumora::fuzz::logbook},
    {"preferences", lumora::fuzz::preferences},
    {"redirects", lumora::fuzz::redirects},
    {"replies", lumora::fuzz::replies},
    {"reports", lumora::fuzz::reports},
    {"requests", lumora::fuzz::requests},
    {"styles", lumora::fuzz::styles},
    {"texts", lumora::fuzz::texts},
    {"xsettings", lumora::fuzz::xsettings},
};

class Seeds : public testing::TestWithParam<FuzzTarget> {};

QDir seedsOf(const QString& target) {
    return QDir(QStringLiteral(LUMORA_SEEDS) + u'/' + target);
}

} // namespace

TEST_P(Seeds, AreAsExpected) {
    const QDir folder = seedsOf(QString::fromLatin1(GetParam().name));
    const QStringList names = folder.entryList(QDir::Files);
    ASSERT_FALSE(names.isEmpty()) << qPrintable(folder.path());
    GetParam().run({});
    for (const QString& name : names) {
        SCOPED_TRACE(qPrintable(name));
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        GetParam().run(file.readAll()); // ends the program where anything is not
    }
}

INSTANTIATE_TEST_SUITE_P(All, Seeds, testing::ValuesIn(fuzzTargets), [](const auto& tested) {
    return tested.param.name;
});
