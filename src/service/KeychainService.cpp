#include "service/KeychainService.h"

#include "platform/SecretStore.h"

#include <QStringDecoder>

#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

SecretKey tokenKey() {
    return {u"com.lumora.app"_s, u"briefingToken"_s};
}

KeychainService::KeychainService(SecretStore& store)
    : m_store(store) {}

std::optional<Wiped<QString>> KeychainService::getToken() const {
    SecretLookup found = m_store.lookup(tokenKey());
    if (found.status != SecretLookup::Status::Found)
        return std::nullopt;
    // Stateless: a sequence cut off at the end is an error too. The token stays as stored, down to
    // a byte order mark.
    QStringDecoder decoder(
        QStringConverter::Utf8,
        QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    Wiped<QString> token(decoder.decode(found.secret));
    wipe(found.secret);
    if (decoder.hasError() || token.text().isEmpty())
        return std::nullopt;
    return token;
}

void KeychainService::askToUnlock() const {
    m_store.askToUnlock();
}

bool KeychainService::setToken(const QString& token) {
    const Wiped trimmed(token.trimmed());
    if (trimmed.text().isEmpty())
        return deleteToken();
    // An old token that stays behind makes the addition fail, or gives way to it.
    std::ignore = m_store.remove(tokenKey());
    const Wiped bytes(trimmed.text().toUtf8());
    return m_store.add(tokenKey(), u"Lumora briefing token"_s, bytes.text());
}

bool KeychainService::deleteToken() {
    return m_store.remove(tokenKey()) != SecretRemoval::Failed;
}

} // namespace lumora
