#include "base/log.h"
#include "base/notice.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "platform/network/network_http.h"
#include "services/claude_client.h"
#include "services/uploader.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/temporary_folder.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <gtest/gtest.h>
#include <mutex>

namespace {

// A web server on loopback, on a thread of its own, that answers every request with the same bytes.
class Server {
public:
    enum class Then { Close, StayOpen };
    explicit Server(QByteArray answer, Then then = Then::Close) : m_answer(std::move(answer)), m_then(then)
    {
        m_thread.start();
        QMetaObject::invokeMethod(&m_context, [this] { listen(); }, Qt::BlockingQueuedConnection);
    }
    ~Server()
    {
        QMetaObject::invokeMethod(&m_context, [this] { m_server.reset(); }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }
    QByteArray url() const { return "http://127.0.0.1:" + QByteArray::number(m_port); }
    QByteArray request() const
    {
        const std::lock_guard lock(m_mutex);
        return m_request;
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
        QByteArray all;
        {
            const std::lock_guard lock(m_mutex);
            m_request += socket->readAll();
            all = m_request;
        }
        const qsizetype head = all.indexOf("\r\n\r\n");
        const qsizetype at = all.toLower().indexOf("content-length: ");
        if (head < 0 || at < 0)
            return;
        const qsizetype length = all.mid(at + 16, all.indexOf('\r', at) - at - 16).toLongLong();
        if (all.size() < head + 4 + length)
            return;
        socket->write(m_answer);
        if (m_then == Then::Close)
            socket->disconnectFromHost();
    }

    QByteArray m_answer;
    Then m_then;
    mutable std::mutex m_mutex;
    QByteArray m_request;
    quint16 m_port = 0;
    QThread m_thread;
    Context m_context{&m_thread};
    std::unique_ptr<QTcpServer> m_server;
};

} // namespace

class Online : public testing::Test {
protected:
    TemporaryFolder folder;
    Defaults defaults{QString()};
    FakeSecrets secrets;
    FakeLoginItem loginItem;
    FakePaths paths{folder.path()};
    NoticeBoard notices;
    AppSettings settings{defaults, secrets, loginItem, paths, notices};
    QImage picture{40, 30, QImage::Format_RGB32};
    NetworkHttp http;

    void SetUp() override
    {
        picture.fill(Qt::darkCyan);
        settings.setApiKey("key-17");
        settings.setImgurClientID(" \tclient-9 ");
    }
    // Without an event loop, as the command line waits.
    Result<QString> ask(const QByteArray &answer, Server::Then then = Server::Then::Close)
    {
        Server server(answer, then);
        qputenv("LUMENPOST_MESSAGES_URL", server.url() + "/other/path?x=1");
        auto result = ClaudeClient(http, settings).run(ClaudeClient::Action::Name, picture).result();
        request = server.request();
        return result;
    }
    Result<QUrl> upload(const QByteArray &answer)
    {
        Server server(answer);
        qputenv("LUMENPOST_UPLOAD_URL", server.url());
        auto result = Uploader(http, settings).imgur(picture).result();
        request = server.request();
        return result;
    }
    QString failureOf(const QByteArray &answer)
    {
        const auto result = ask(answer);
        return result ? "no failure: " + *result : result.error().message;
    }

    QByteArray request;
};

TEST_F(Online, AsksWithThePictureFirstAndTheWordsSecond)
{
    const auto reply = ask(Server::reply(
        R"({"content":[{"type":"text","text":" Quiet "},{"type":"x","text":"no"},{"type":"text","text":"Harbour\n"}]})"));
    ASSERT_TRUE(reply) << reply.error().message.toStdString();
    EXPECT_EQ(*reply, "Quiet Harbour");
    const QByteArray head = request.left(request.indexOf("\r\n\r\n")).toLower();
    EXPECT_TRUE(head.startsWith("post /v1/messages http/1.1\r\n"));
    for (const char *header :
         {"content-type: application/json", "x-api-key: key-17", "anthropic-version: 2023-06-01",
          "anthropic-beta: server-side-fallback-2026-07-01"})
        EXPECT_TRUE(head.contains(header)) << header;
    const QJsonObject body = QJsonDocument::fromJson(request.mid(request.indexOf("\r\n\r\n") + 4)).object();
    EXPECT_EQ(body["model"], "claude-opus-5-5");
    EXPECT_EQ(body["max_tokens"], 16000);
    EXPECT_EQ(body["fallbacks"], "default");
    EXPECT_EQ(body["output_config"]["effort"], "low");
    const QJsonArray content = body["messages"][0]["content"].toArray();
    ASSERT_EQ(content.size(), 2);
    EXPECT_EQ(content[0]["source"]["media_type"], "image/jpeg");
    const QImage sent =
        QImage::fromData(QByteArray::fromBase64(content[0]["source"]["data"].toString().toLatin1()));
    EXPECT_EQ(sent.size(), picture.size());
    EXPECT_EQ(content[1]["text"], ClaudeClient::prompt(ClaudeClient::Action::Name));
}

TEST_F(Online, TellsEachFormOfReplyApart)
{
    EXPECT_EQ(ask(Server::reply("{}")).value(), "");
    EXPECT_EQ(ask(Server::reply("not json")).value(), "");
    EXPECT_EQ(failureOf(Server::reply("<html>", "500 Oops")), "Claude API error (HTTP 500).");
    EXPECT_EQ(failureOf(Server::reply(R"({"error":{"message":"too big"}})", "413 Large")), "too big");
    EXPECT_EQ(failureOf(Server::reply(R"({"error":{"message":7}})", "401 No")),
              "Claude API error (HTTP 401).");
    EXPECT_EQ(failureOf(Server::reply(R"({"stop_reason":"refusal"})")), "Claude declined this request.");
    EXPECT_EQ(
        failureOf(Server::reply(R"({"stop_reason":"refusal","stop_details":{"explanation":"private"}})")),
        "Claude declined this request: private");
    EXPECT_EQ(failureOf("HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:9/\r\nContent-Length: 0\r\n\r\n"),
              "Claude API error (HTTP 302).")
        << "the key must not follow a redirect";
}

TEST_F(Online, CountsHalfAReplyAsAFailure)
{
    EXPECT_EQ(failureOf("HTTP/1.1 200 OK\r\nContent-Length: 900\r\n\r\n{\"content\":["),
              "127.0.0.1 closed the connection before its answer was complete.");
    // Of a reply in chunks the network stack doesn't tell whether the last one came; half a text must not
    // pass.
    EXPECT_EQ(ask("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n40\r\n{\"content\":[").value_or(""),
              "");
    EXPECT_EQ(failureOf("HTTP/1.1 20"), "127.0.0.1 closed the connection before its answer was complete.");
}

TEST_F(Online, GivesUpOnAServerThatStaysSilent)
{
    Server server("", Server::Then::StayOpen);
    const auto result = http.send({.method = "POST",
                                   .url = QUrl(server.url()),
                                   .headers = {},
                                   .body = "x",
                                   .timeout = std::chrono::milliseconds(60)})
                            .result();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().message, "127.0.0.1 didn't answer in time.");
}

TEST_F(Online, FinishesAnExchangeUnderWayWhenItEnds)
{
    Server server("", Server::Then::StayOpen);
    auto ending = std::make_unique<NetworkHttp>();
    auto future = ending->send({.method = "POST", .url = QUrl(server.url()), .headers = {}, .body = "x"});
    ending.reset();
    ASSERT_TRUE(future.isFinished());
    EXPECT_FALSE(future.result());
}

TEST_F(Online, AsksNothingWithoutCredentials)
{
    settings.setApiKey("");
    settings.setImgurClientID("  \t");
    qputenv("LUMENPOST_MESSAGES_URL", "http://127.0.0.1:1");
    EXPECT_EQ(ClaudeClient(http, settings).run(ClaudeClient::Action::Steps, picture).result().error().message,
              "Add your Anthropic API key in Settings › AI & Sharing.");
    EXPECT_EQ(Uploader(http, settings).imgur(picture).result().error().message,
              "Add an Imgur Client ID in Settings › AI & Sharing.");
    settings.setApiKey("k");
    EXPECT_EQ(
        ClaudeClient(http, settings).run(ClaudeClient::Action::Steps, QImage()).result().error().message,
        "Couldn't encode the image.");
    EXPECT_EQ(ClaudeClient(http, settings).run(ClaudeClient::Action::Steps, picture).result().error().message,
              "127.0.0.1 refuses the connection.");
    settings.setApiKey("a\r\nHost: b");
    EXPECT_EQ(ClaudeClient(http, settings).run(ClaudeClient::Action::Steps, picture).result().error().kind,
              Error::Kind::Invalid);
}

TEST_F(Online, UploadsTheFormByteForByte)
{
    const auto link = upload(Server::reply(R"({"data":{"link":"https://i.example/a.png"}})"));
    ASSERT_TRUE(link) << link.error().message.toStdString();
    EXPECT_EQ(*link, QUrl("https://i.example/a.png"));
    EXPECT_TRUE(request.startsWith("POST /3/image HTTP/1.1\r\n"));
    EXPECT_TRUE(request.contains("Authorization: Client-ID client-9\r\n"));
    const qsizetype at = request.indexOf("boundary=") + 9;
    const QByteArray boundary = request.mid(at, request.indexOf("\r\n", at) - at);
    EXPECT_TRUE(boundary.startsWith("Lumenpost-"));
    const QByteArray body = request.mid(request.indexOf("\r\n\r\n") + 4);
    const QByteArray before =
        "--" + boundary +
        "\r\nContent-Disposition: form-data; name=\"image\"; filename=\"capture.png\"\r\n"
        "Content-Type: image/png\r\n\r\n";
    const QByteArray after = "\r\n--" + boundary + "--\r\n";
    ASSERT_TRUE(body.startsWith(before));
    ASSERT_TRUE(body.endsWith(after));
    const QImage sent =
        QImage::fromData(body.mid(before.size(), body.size() - before.size() - after.size()), "PNG");
    EXPECT_EQ(sent.convertToFormat(QImage::Format_RGB32), picture);
}

TEST_F(Online, TakesTheUploadsMessageFromEitherForm)
{
    const auto failure = [this](const QByteArray &body, const QByteArray &status = "400 Bad") {
        const auto result = upload(Server::reply(body, status));
        return result ? "no failure: " + result->toString() : result.error().message;
    };
    EXPECT_EQ(failure(R"({"data":{"error":"over capacity"}})"), "over capacity");
    EXPECT_EQ(failure(R"({"data":{"error":{"message":"bad type"}}})"), "bad type");
    EXPECT_EQ(failure("<html>"), "Imgur upload failed.");
    EXPECT_EQ(failure(R"({"data":{"link":"http://a b"}})", "200 OK"), "Imgur upload failed.");
    EXPECT_EQ(failure(R"({"data":{"link":"https://i.example/a.png"}})", "500 No"), "Imgur upload failed.");
}

TEST_F(Online, WritesNothingSecretToTheLog)
{
    Log::setDirectory(folder.path("log"));
    failureOf(Server::reply("no", "500 No"));
    EXPECT_FALSE(upload(Server::reply("no", "500 No")));
    Log::info("end");
    Log::flush();
    QFile file(folder.path("log") + "/lumenpost.log");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray log = file.readAll();
    Log::setDirectory({});
    EXPECT_TRUE(log.contains("end"));
    EXPECT_FALSE(log.contains("key-17"));
    EXPECT_FALSE(log.contains("client-9"));
}
