#pragma once

#include "briefing/json/DecodeError.h"

#include <QByteArray>
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

/// `json` with every integer literal that fits neither a signed nor an unsigned 64-bit integer
/// written as a float ("e0" appended). Texts inside quotation marks stay as they are.
QByteArray withHugeIntegersAsFloats(QByteArrayView json);

} // namespace lumora
