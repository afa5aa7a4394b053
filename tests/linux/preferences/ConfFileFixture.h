#pragma once

#include "linux/preferences/ConfFilePreferences.h"
#include "support/Patience.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace lumora::tests {

/// A user's folders, without a preferences file.
class ConfFileFixture : public testing::Test {
protected:
    static QByteArray contents(const QString& path) {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : "(no file)";
    }

    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QFile::WriteOnly | QFile::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QStringList filesInFolder() const {
        return QDir(QFileInfo(path).path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    /// Runs a shell command as another program would, with $F as the file.
    void shell(const QString& command) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("F"), path);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral("sh"), {QStringLiteral("-ec"), command});
        ASSERT_TRUE(process.waitForFinished(patience));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    }

    QTemporaryDir home;
    const QString path = home.filePath(QStringLiteral("config/lumora/lumora.conf"));
};

} // namespace lumora::tests
