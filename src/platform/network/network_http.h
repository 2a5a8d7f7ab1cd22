#pragma once

#include "platform/http.h"

#include <QObject>
#include <QThread>

// HTTP over Qt's network stack, on a thread of its own, so that exchanges go on and finish also while the
// caller blocks. Redirects are not followed: they would carry credentials to another host. Exchanges still
// under way when it is destroyed finish as cancelled.
class NetworkHttp : public Http {
public:
    NetworkHttp();
    ~NetworkHttp() override;
    QFuture<Result<HttpResponse>> send(const HttpRequest &request) override;

private:
    class Worker;
    QThread m_thread; // started with the first exchange
    Worker *m_worker = nullptr;
};
