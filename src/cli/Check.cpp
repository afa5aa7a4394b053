#include "cli/Check.h"

#include "briefing/BriefingDecoder.h"
#include "cli/Answers.h"
#include "cli/StandardInput.h"
#include "linux/files/WholeFile.h"
#include "linux/http/ServiceProbe.h"
#include "linux/preferences/ConfFilePreferences.h"
#include "linux/preferences/IniDocument.h"
#include "linux/secrets/LibsecretStore.h"
#include "platform/PreferenceKeys.h"
#include "service/EndpointPolicy.h"
#include "service/KeychainService.h"
#include "texts/CheckedBriefing.h"
#include "texts/HtmlPage.h"

#include <QFile>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

using Bytes = tl::expected<QByteArray, QString>;

constexpr qint64 largestBriefing = 16'777'216;
constexpr std::chrono::seconds patienceWithService{30};

bool isAddress(const QString& source) {
    return source.startsWith("https://"_L1) || source.startsWith("http://"_L1);
}

/// The endpoint in the preferences, which are left as they are; empty without one.
QString ownEndpoint() {
    const auto bytes = readFile(ConfFilePreferences::defaultPath());
    const auto document = bytes ? IniDocument::parse(*bytes) : std::nullopt;
    return document ? document->value(PreferenceKeys::endpointURL.name).value_or(QString())
                    : QString();
}

bool hasSameOrigin(const QUrl& one, const QUrl& other) {
    const auto port = [](const QUrl& url) { return url.port(url.scheme() == u"https" ? 443 : 80); };
    return one.scheme() == other.scheme() && one.host() == other.host() && port(one) == port(other);
}

/// The user's token where it may go to `url`: to the service that it is for. Empty elsewhere.
Wiped<QByteArray> tokenFor(const QUrl& url) {
    const auto endpoint = parseEndpoint(ownEndpoint());
    if (!endpoint || !hasSameOrigin(url, *endpoint) || !checkTokenMayGoTo(url))
        return Wiped(QByteArray());
    LibsecretStore store(QDBusConnection::sessionBus());
    const auto token = KeychainService(store).getToken();
    return Wiped(token ? token->text().toUtf8() : QByteArray());
}

Bytes fetched(const QString& address) {
    const auto url = parseEndpoint(address);
    if (!url || url->host().isEmpty())
        return tl::unexpected(u"Invalid address"_s);
    const ServiceProbe probe = probeService(*url, tokenFor(*url).text(), patienceWithService);
    if (probe.reached != ServiceProbe::Stage::Complete)
        return tl::unexpected(probe.trouble);
    if (probe.cutOff)
        return tl::unexpected(u"The body is larger than is taken"_s);
    if (probe.status / 100 != 2)
        return tl::unexpected(u"The answer has the status %1"_s.arg(probe.status));
    return probe.body;
}

Bytes readFrom(const QString& path) {
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return tl::unexpected(file.errorString());
    QByteArray bytes = file.read(largestBriefing + 1);
    if (bytes.size() > largestBriefing)
        return tl::unexpected(u"The file is larger than is taken"_s);
    return bytes;
}

Bytes bytesOf(const QString& source) {
    if (source == u"-")
        return standardInput(largestBriefing);
    return isAddress(source) ? fetched(source) : readFrom(source);
}

} // namespace

int checkBriefing(const CheckCommand& command) {
    const QString name = command.source == u"-" ? u"standard input"_s : command.source;
    const auto faulty = [&name](const QString& fault) {
        return complain(name + u": "_s + fault, Failure);
    };
    const Bytes bytes = bytesOf(command.source);
    if (!bytes)
        return faulty(bytes.error());
    const auto briefing = decodeBriefing(*bytes);
    if (!briefing)
        return faulty(
            isHtmlPage(*bytes) ? u"It is an HTML page, such as for logging in, and no JSON"_s
                               : briefing.error().text());
    const auto now =
        std::chrono::time_point_cast<Instant::duration>(std::chrono::system_clock::now());
    return print(checkedBriefing(*briefing, command.now.value_or(now)));
}

} // namespace lumora
