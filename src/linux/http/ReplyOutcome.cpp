#include "linux/http/ReplyOutcome.h"

#include <QNetworkReply>

using namespace Qt::Literals::StringLiterals;

namespace lumora {

namespace {

// Qt reports every status from 400 on as an error of the reply, with codes that it uses for little
// else; a connection that breaks has a code of another range.
bool isMereStatus(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::ContentReSendError:
        return false;
    case QNetworkReply::ProxyAuthenticationRequiredError:
    case QNetworkReply::ProtocolInvalidOperationError:
        return true;
    default:
        return (error >= QNetworkReply::ContentAccessDenied &&
                error <= QNetworkReply::UnknownContentError) ||
               (error >= QNetworkReply::InternalServerError &&
                error <= QNetworkReply::UnknownServerError);
    }
}

} // namespace

HttpOutcome outcomeOf(const QNetworkReply& reply, const QByteArray& body) {
    const auto error = reply.error();
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool complete = error == QNetworkReply::NoError || (status >= 400 && isMereStatus(error));
    if (status != 0 && complete)
        return HttpResponse{status, body};

    switch (error) {
    case QNetworkReply::OperationCanceledError: // Qt's own reaction to silence
        return timedOut();
    case QNetworkReply::UnknownContentError: // Qt's text says nothing behind its colon
        return failed(u"The answer is compressed and damaged"_s);
    case QNetworkReply::ContentReSendError: // closed unanswered, see OneShotUpload
    case QNetworkReply::RemoteHostClosedError:
        return failed(u"Connection closed"_s);
    case QNetworkReply::NoError: // finished without a status
        return tl::unexpected(
            TransportError{TransportError::Kind::NotHttp, u"The answer is no HTTP"_s});
    default:
        return failed(reply.errorString());
    }
}

HttpOutcome timedOut() {
    return failed(u"The request timed out"_s);
}

HttpOutcome failed(const QString& description) {
    return tl::unexpected(TransportError{TransportError::Kind::Failed, description});
}

HttpOutcome refused(const QString& description) {
    return tl::unexpected(TransportError{TransportError::Kind::Refused, description});
}

} // namespace lumora
