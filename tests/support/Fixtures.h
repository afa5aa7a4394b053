#pragma once

#include <QByteArray>
#include <QString>

namespace lumora::tests {

/// The content of tests/fixtures/`name`; ends the test program when there is no such file.
QByteArray fixture(const QString& name);

} // namespace lumora::tests
