#include "platform/qt/QtHTTP.h"

#include <QByteArray>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>
#include <QVariant>
#include <algorithm>
#include <cmath>
#include <memory>

namespace korvantis {

namespace {

constexpr const char* timedOut = "The request timed out.";

/// Words of our own for an error: Qt's hold the URL or the host's name.
std::string errorText(QNetworkReply::NetworkError error) {
  switch (error) {
    case QNetworkReply::ConnectionRefusedError: return "Could not connect to the server.";
    case QNetworkReply::RemoteHostClosedError: return "The network connection was lost.";
    case QNetworkReply::HostNotFoundError: return "The server could not be found.";
    case QNetworkReply::TimeoutError: return timedOut;
    case QNetworkReply::OperationCanceledError: return timedOut;
    case QNetworkReply::SslHandshakeFailedError:
      return "No secure connection to the server: its certificate is not trusted.";
    case QNetworkReply::ProtocolUnknownError: return "Unsupported URL.";
    case QNetworkReply::ProtocolInvalidOperationError: return "Unsupported URL.";
    case QNetworkReply::ProtocolFailure: return "The server's answer could not be understood.";
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
      return "The proxy server could not be used.";
    default: return "The network request failed.";
  }
}

QNetworkRequest networkRequest(const HTTPRequest& request) {
  QNetworkRequest made(QUrl(QString::fromStdString(request.url), QUrl::StrictMode));
  made.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                    QNetworkRequest::ManualRedirectPolicy);
  for (const auto& [name, value] : request.headers) {
    made.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
  }
  return made;
}

std::optional<int> statusCodeOf(const QNetworkReply& reply) {
  const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
  return status.isValid() ? std::optional(status.toInt()) : std::nullopt;
}

/// Whether an error means that no whole answer came. Those of a status, 404 and the like, come with
/// one.
bool isTransferError(QNetworkReply::NetworkError error) {
  return error < QNetworkReply::ContentAccessDenied || error == QNetworkReply::ProtocolFailure;
}

HTTPAnswer answerOf(const QNetworkReply& reply) {
  const QNetworkReply::NetworkError error = reply.error();
  const auto status = statusCodeOf(reply);
  if (error == QNetworkReply::NoError || (status && !isTransferError(error)))
    return {.error = {}, .statusCode = status};
  return {.error = errorText(error), .statusCode = {}};
}

QNetworkReply* send(QNetworkAccessManager& manager, const HTTPRequest& request) {
  const QNetworkRequest made = networkRequest(request);
  if (request.method == "GET" && !request.body) return manager.get(made);
  return manager.sendCustomRequest(made, QByteArray::fromStdString(request.method),
                                   QByteArray::fromStdString(request.body.value_or("")));
}

int milliseconds(double seconds) {
  return static_cast<int>(std::ceil(std::clamp(seconds, 0.001, 86400.0) * 1000));
}

/// An object of the calling thread's event loop each time: nothing of it is left afterwards.
HTTPAnswer dataForRequest(const HTTPRequest& request) {
  QNetworkAccessManager manager;
  QEventLoop loop;
  QTimer limit;
  const std::unique_ptr<QNetworkReply> reply(send(manager, request));
  QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
  // The body goes unread, but whoever sends a long one must not fill our memory.
  QObject::connect(reply.get(), &QNetworkReply::readyRead, &loop,
                   [&reply] { reply->skip(reply->bytesAvailable()); });
  QObject::connect(&limit, &QTimer::timeout, reply.get(), &QNetworkReply::abort);
  limit.setSingleShot(true);
  limit.start(milliseconds(request.timeoutSeconds));
  if (!reply->isFinished()) loop.exec();
  return answerOf(*reply);
}

}  // namespace

HTTPCalls qtHTTPCalls() {
  return {dataForRequest};
}

}  // namespace korvantis
