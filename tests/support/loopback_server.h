#pragma once

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>
#include <chrono>
#include <memory>
#include <mutex>

// A web server on loopback, on a thread of its own, that answers whole requests with the bytes it was given:
// one after the other, the last for ever.
class LoopbackServer {
public:
    enum class Then { Close, StayOpen };
    struct Manner {
        Then then = Then::Close;
        // Sends the answer in so many pieces, with a pause before each but the first.
        int pieces = 1;
        std::chrono::milliseconds pause{0};
    };

    explicit LoopbackServer(QByteArray answer, Then then = Then::Close)
        : LoopbackServer(std::move(answer), Manner{.then = then})
    {}
    LoopbackServer(QByteArray answer, Manner manner)
        : LoopbackServer(QByteArrayList{std::move(answer)}, manner)
    {}
    LoopbackServer(QByteArrayList answers, Manner manner) : m_answers(std::move(answers)), m_manner(manner)
    {
        m_thread.start();
        QMetaObject::invokeMethod(&m_context, [this] { listen(); }, Qt::BlockingQueuedConnection);
    }
    ~LoopbackServer()
    {
        QMetaObject::invokeMethod(&m_context, [this] { m_server.reset(); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }
    QByteArray url() const { return "http://127.0.0.1:" + QByteArray::number(m_port); }
    // All that it was sent.
    QByteArray request() const
    {
        const std::lock_guard lock(m_mutex);
        return m_request;
    }
    // The whole ones, each by itself.
    QByteArrayList requests() const
    {
        const std::lock_guard lock(m_mutex);
        return m_requests;
    }

    static QByteArray reply(const QByteArray &body, const QByteArray &status = "200 OK")
    {
        return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" +
               body;
    }

private:
    struct Context : QObject {
        explicit Context(QThread *thread) { moveToThread(thread); }
    };
    void listen()
    {
        m_server = std::make_unique<QTcpServer>();
        m_server->listen(QHostAddress::LocalHost);
        m_port = m_server->serverPort();
        QObject::connect(m_server.get(), &QTcpServer::newConnection, m_server.get(), [this] {
            QTcpSocket *socket = m_server->nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { read(socket); });
        });
    }
    void read(QTcpSocket *socket)
    {
        // Each connection counts its own bytes: several may be under way.
        QByteArray all = socket->property("request").toByteArray() + socket->readAll();
        socket->setProperty("request", all);
        {
            const std::lock_guard lock(m_mutex);
            m_request = all;
        }
        const qsizetype head = all.indexOf("\r\n\r\n");
        if (head < 0)
            return;
        const QByteArray heads = all.left(head + 2).toLower();
        const qsizetype at = heads.indexOf("content-length: ");
        const qsizetype length =
            at < 0 ? 0 : heads.mid(at + 16, heads.indexOf('\r', at) - at - 16).toLongLong();
        if (all.size() < head + 4 + length)
            return;
        socket->setProperty("answer", m_answers.size() > 1 ? m_answers.takeFirst() : m_answers.first());
        {
            const std::lock_guard lock(m_mutex);
            m_requests.append(all);
        }
        answer(socket, 0);
    }
    void answer(QTcpSocket *socket, int piece)
    {
        const QByteArray whole = socket->property("answer").toByteArray();
        const qsizetype from = whole.size() * piece / m_manner.pieces;
        const qsizetype to = whole.size() * (piece + 1) / m_manner.pieces;
        socket->write(whole.mid(from, to - from));
        if (piece + 1 < m_manner.pieces)
            QTimer::singleShot(m_manner.pause, socket, [=, this] { answer(socket, piece + 1); });
        else if (m_manner.then == Then::Close)
            socket->disconnectFromHost();
    }

    QByteArrayList m_answers;
    Manner m_manner;
    mutable std::mutex m_mutex;
    QByteArray m_request;
    QByteArrayList m_requests;
    quint16 m_port = 0;
    QThread m_thread;
    Context m_context{&m_thread};
    std::unique_ptr<QTcpServer> m_server;
};
