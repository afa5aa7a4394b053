#pragma once

// Private to the decoders of this floor: the JSON library shows through here and nowhere else.

#include "briefing/DecodeError.h"

#include <QByteArrayView>

#include <simdjson.h>
#include <tl/expected.hpp>

namespace lumora {

/// One parsed JSON text. The parser's memory is kept for the next text on the same thread, unless
/// the text was large. At most one document per thread may exist at a time.
class JsonDocument {
public:
    /// Parses `bytes`. The error of a text that is no JSON has no path.
    explicit JsonDocument(QByteArrayView bytes);
    ~JsonDocument();

    Q_DISABLE_COPY_MOVE(JsonDocument)

    /// The outermost value, valid as long as the document, or what is wrong with the text.
    const tl::expected<simdjson::dom::element, DecodeError>& root() const { return m_root; }

private:
    tl::expected<simdjson::dom::element, DecodeError> m_root;
};

} // namespace lumora
