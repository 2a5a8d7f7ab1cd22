#include "platform/network/network_http.h"

#include "base/async.h"
#include "platform/texts.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

// One answer to one caller, given exactly once.
class Exchange {
public:
    Exchange() { m_promise.start(); }
    ~Exchange()
    {
        if (!m_isDone)
            finish(cancelled());
    }
    QFuture<Result<HttpResponse>> future() { return m_promise.future(); }
    void finish(Result<HttpResponse> result)
    {
        m_isDone = true;
        m_promise.addResult(std::move(result));
        m_promise.finish();
    }

private:
    QPromise<Result<HttpResponse>> m_promise;
    bool m_isDone = false;
};

QString sentence(const QNetworkReply &reply)
{
    const QString host = reply.url().host();
    switch (reply.error()) {
    case QNetworkReply::ConnectionRefusedError:
        return PlatformTexts::tr("%1 refuses the connection.").arg(host);
    case QNetworkReply::HostNotFoundError:
        return PlatformTexts::tr("%1 can't be found; is this machine connected to a network?").arg(host);
    case QNetworkReply::OperationCanceledError:
    case QNetworkReply::TimeoutError:
        return PlatformTexts::tr("%1 didn't answer in time.").arg(host);
    case QNetworkReply::RemoteHostClosedError:
        return PlatformTexts::tr("%1 closed the connection before its answer was complete.").arg(host);
    case QNetworkReply::SslHandshakeFailedError:
        return PlatformTexts::tr("No safe connection to %1 could be made.").arg(host);
    default:
        return PlatformTexts::tr("The exchange with %1 failed: %2.").arg(host, reply.errorString());
    }
}

Result<HttpResponse> resultOf(QNetworkReply &reply)
{
    const QVariant status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute);
    // Codes from 200 on tell of the server's status, which is an answer; those below, that there is none.
    const bool exchanged = reply.error() == QNetworkReply::NoError || int(reply.error()) >= 200;
    if (!exchanged || !status.isValid())
        return fail(sentence(reply), reply.errorString());
    HttpResponse response{status.toInt(), reply.readAll()};
    const QVariant announced = reply.header(QNetworkRequest::ContentLengthHeader);
    const bool encoded = reply.hasRawHeader("Content-Encoding");
    if (announced.isValid() && !encoded && announced.toLongLong() > response.body.size())
        return fail(PlatformTexts::tr("%1 closed the connection before its answer was complete.")
                        .arg(reply.url().host()));
    return response;
}

bool isOneLine(const QByteArray &text)
{
    return !text.contains('\r') && !text.contains('\n') && !text.contains('\0');
}

} // namespace

class NetworkHttp::Worker : public QObject {
public:
    void send(const HttpRequest &asked, const std::shared_ptr<Exchange> &exchange)
    {
        if (!m_network)
            m_network = std::make_unique<QNetworkAccessManager>();
        QNetworkRequest request(asked.url);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        request.setTransferTimeout(int(asked.timeout.count()));
        for (const auto &[name, value] : asked.headers)
            request.setRawHeader(name, value);
        QNetworkReply *reply = m_network->sendCustomRequest(request, asked.method, asked.body);
        connect(reply, &QNetworkReply::finished, this, [exchange, reply] {
            exchange->finish(resultOf(*reply));
            reply->deleteLater();
        });
    }

private:
    std::unique_ptr<QNetworkAccessManager> m_network;
};

NetworkHttp::NetworkHttp()
{
    m_thread.setObjectName("http");
}

NetworkHttp::~NetworkHttp()
{
    m_thread.quit();
    m_thread.wait();
}

QFuture<Result<HttpResponse>> NetworkHttp::send(const HttpRequest &request)
{
    for (const auto &[name, value] : request.headers)
        if (!isOneLine(name) || !isOneLine(value))
            return readyFuture(Result<HttpResponse>(fail(
                Error::Kind::Invalid,
                PlatformTexts::tr("A line break can't be part of “%1”.").arg(QString::fromLatin1(name)))));
    if (!m_thread.isRunning()) {
        m_worker = new Worker;
        m_worker->moveToThread(&m_thread);
        QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
        m_thread.start();
    }
    auto exchange = std::make_shared<Exchange>();
    auto future = exchange->future();
    QMetaObject::invokeMethod(
        m_worker, [worker = m_worker, request, exchange] { worker->send(request, exchange); },
        Qt::QueuedConnection);
    return future;
}
