#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QFuture>
#include <QImage>
#include <QUrl>

class AppSettings;
class Http;
struct HttpResponse;

// Sends one picture anonymously to Imgur, with the Client ID that the user has entered, and gives back its
// public link. No retry.
class Uploader {
public:
    // Both outlive the uploader.
    Uploader(Http &http, const AppSettings &settings);

    // Called on the main thread; the future may finish on another one.
    QFuture<Result<QUrl>> imgur(const QImage &image);

    // The form around the picture, byte for byte.
    static QByteArray body(const QByteArray &boundary, const QByteArray &png);
    // What a reply says.
    static Result<QUrl> read(const HttpResponse &response);

private:
    Http &m_http;
    const AppSettings &m_settings;
};
