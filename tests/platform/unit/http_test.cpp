#include "fakes/fake_recognition.h"
#include "platform/contracts/http_contract.h"
#include "platform/network/network_http.h"
#include "support/loopback_server.h"

namespace {

class FakeHttpWorld : public HttpWorld {
public:
    Http &http() override { return *m_http; }
    QUrl answering(int status, const QByteArray &body) override
    {
        m_http->answers = {HttpResponse{status, body}};
        return QUrl("http://server.example");
    }
    QUrl troubled(Trouble trouble) override
    {
        using Failure = FakeHttp::Failure;
        static const QHash<Trouble, Failure> failures{{Trouble::Silence, Failure::Silence},
                                                      {Trouble::HalfAReply, Failure::HalfAReply},
                                                      {Trouble::NoConnection, Failure::NoConnection},
                                                      {Trouble::NoSuchHost, Failure::NoSuchHost}};
        m_http->answers = {FakeHttp::failed(failures[trouble])};
        return QUrl("http://server.example");
    }
    Arrival lastArrival() override
    {
        const HttpRequest &last = m_http->requests.last();
        QByteArray heads;
        for (const auto &[name, value] : last.headers)
            heads += name.toLower() + ": " + value.toLower() + "\n";
        return {last.method, last.url.path().toLatin1(), heads, last.body};
    }
    void end() override { m_http.reset(); }

private:
    std::unique_ptr<FakeHttp> m_http = std::make_unique<FakeHttp>();
};

class NetworkHttpWorld : public HttpWorld {
public:
    Http &http() override { return *m_http; }
    QUrl answering(int status, const QByteArray &body) override
    {
        return serve(LoopbackServer::reply(body, QByteArray::number(status) + " Said"));
    }
    QUrl troubled(Trouble trouble) override
    {
        switch (trouble) {
        case Trouble::Silence:
            return serve("", LoopbackServer::Then::StayOpen);
        case Trouble::HalfAReply:
            return serve("HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n{\"content\":[");
        case Trouble::NoConnection: {
            QTcpServer free; // a port where nobody listens once it is closed
            free.listen(QHostAddress::LocalHost);
            return QUrl(QString("http://127.0.0.1:%1").arg(free.serverPort()));
        }
        case Trouble::NoSuchHost:
            return QUrl("http://nobody.invalid");
        }
        Q_UNREACHABLE();
    }
    Arrival lastArrival() override
    {
        const QByteArray all = m_server->request();
        const qsizetype head = all.indexOf("\r\n\r\n");
        const QList<QByteArray> first = all.left(all.indexOf("\r\n")).split(' ');
        return {first[0], first[1], all.left(head + 2).toLower().replace("\r\n", "\n"), all.mid(head + 4)};
    }
    void end() override { m_http.reset(); }

private:
    QUrl serve(const QByteArray &bytes, LoopbackServer::Then then = LoopbackServer::Then::Close)
    {
        m_server = std::make_unique<LoopbackServer>(bytes, then);
        return QUrl(m_server->url());
    }
    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<NetworkHttp> m_http = std::make_unique<NetworkHttp>();
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, HttpContract,
                         testing::Values([] { return std::make_unique<FakeHttpWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Network, HttpContract,
                         testing::Values([] { return std::make_unique<NetworkHttpWorld>(); }));

TEST(NetworkHttp, CountsTheTimeWithoutAnyByteAndNotTheWhole)
{
    const LoopbackServer server(LoopbackServer::reply("a slow answer that takes longer than a silence may"),
                                {.pieces = 12, .pause = std::chrono::milliseconds(60)});
    const auto answer =
        NetworkHttp().send({.url = QUrl(server.url()), .timeout = std::chrono::milliseconds(500)}).result();
    ASSERT_TRUE(answer) << answer.error().message.toStdString();
    EXPECT_TRUE(answer->body.endsWith("may"));
}

TEST(NetworkHttp, FollowsNoRedirect)
{
    const LoopbackServer other(LoopbackServer::reply("the key has arrived"));
    const LoopbackServer server("HTTP/1.1 307 Moved\r\nLocation: " + other.url() +
                                "/\r\nContent-Length: 0\r\n\r\n");
    const auto answer =
        NetworkHttp().send({.url = QUrl(server.url()), .headers = {{"x-api-key", "key"}}}).result();
    ASSERT_TRUE(answer);
    EXPECT_EQ(answer->status, 307);
    EXPECT_EQ(other.request(), "");
}
