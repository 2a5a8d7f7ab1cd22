#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QFuture>
#include <QList>
#include <QUrl>
#include <chrono>
#include <utility>

struct HttpRequest {
    QByteArray method = "GET";
    QUrl url{};
    QList<std::pair<QByteArray, QByteArray>> headers{};
    QByteArray body{};
    std::chrono::milliseconds timeout{60000}; // without any byte moving
};

struct HttpResponse {
    int status = 0;
    QByteArray body;
};

// One exchange with a web server. A response of any status is a success; no connection, a time-out and a
// reply that stops half-way are errors.
class Http {
public:
    virtual ~Http() = default;
    virtual QFuture<Result<HttpResponse>> send(const HttpRequest &request) = 0;
};
