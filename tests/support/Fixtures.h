#pragma once

#include <QByteArray>
#include <QString>

namespace lumora::tests {

/// The content of tests/fixtures/`name`; ends the test program when there is no such file.
QByteArray fixture(const QString& name);

/// The smallest briefing that decodes, with one habit of two done.
QByteArray briefingBody(double generatedAt);

} // namespace lumora::tests
