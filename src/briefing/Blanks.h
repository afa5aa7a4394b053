#pragma once

#include <QStringView>

namespace lumora {

/// `text` without spaces and tabs at its ends; other white space stays.
QStringView withoutBlanks(QStringView text);

} // namespace lumora
