#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace lumora {

/// `json` with every integer literal that fits neither a signed nor an unsigned 64-bit integer
/// written as a float ("e0" appended). Texts inside quotation marks stay as they are.
QByteArray withHugeIntegersAsFloats(QByteArrayView json);

} // namespace lumora
