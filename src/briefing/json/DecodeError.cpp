#include "briefing/json/DecodeError.h"

using namespace Qt::Literals::StringLiterals;

namespace lumora {

QString DecodeError::text() const {
    return path.isEmpty() ? description : path + ": "_L1 + description;
}

} // namespace lumora
