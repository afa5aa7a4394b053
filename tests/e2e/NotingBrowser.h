#pragma once

#include "support/Patience.h"
#include "support/ProgramHarness.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace lumora::tests {

/// The user's browser, which only notes down what it is to open.
class NotingBrowser {
public:
    /// For programs of `user` that are started from now on: the desktop's way to open an address
    /// is the first one of this name on the path.
    explicit NotingBrowser(ProgramHarness& user) {
        QFile script(m_folder.filePath(QStringLiteral("xdg-open")));
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s\\n' \"$*\" >> \"${0%/*}/opened\"\n");
        EXPECT_TRUE(script.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        user.setVariable(
            QStringLiteral("PATH"), m_folder.path() + u':' + qEnvironmentVariable("PATH"));
    }

    QByteArrayList opened() const {
        QFile file(m_folder.filePath(QStringLiteral("opened")));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        auto lines = file.readAll().split('\n');
        lines.removeLast();
        return lines;
    }

    /// Waits until these and no others were opened.
    testing::AssertionResult opens(const QByteArrayList& links) const {
        if (QTest::qWaitFor([&] { return opened() == links; }, patience))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "opened: " << opened().join(' ').toStdString();
    }

private:
    QTemporaryDir m_folder;
};

} // namespace lumora::tests
