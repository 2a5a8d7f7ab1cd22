#include "base/log.h"
#include "base/notice.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_recognition.h"
#include "platform/network/network_http.h"
#include "services/claude_client.h"
#include "services/uploader.h"
#include "settings/app_settings.h"
#include "settings/defaults.h"
#include "support/loopback_server.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

using Server = LoopbackServer;

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

TEST_F(Online, AsksAsMuchAsTheActionIsWorthAndSendsNoPictureLargerThanIsLookedAt)
{
    using Action = ClaudeClient::Action;
    FakeHttp http;
    ClaudeClient client(http, settings);
    for (const auto &[action, effort] :
         {std::pair(Action::Describe, "medium"), std::pair(Action::Steps, "medium"),
          std::pair(Action::AltText, "low"), std::pair(Action::Name, "low"),
          std::pair(Action::Caption, "low")}) {
        std::ignore = client.run(action, picture.scaled(3136, 1000)).result();
        ASSERT_FALSE(http.requests.isEmpty());
        const QJsonObject body = QJsonDocument::fromJson(http.requests.takeLast().body).object();
        EXPECT_EQ(body["output_config"]["effort"], effort) << int(action);
        const QByteArray sent = body["messages"][0]["content"][0]["source"]["data"].toString().toLatin1();
        EXPECT_EQ(QImage::fromData(QByteArray::fromBase64(sent)).size(), QSize(1568, 500));
    }
}

TEST(ClaudeClient, TellsEachFormOfReplyApart)
{
    const QByteArray nested = QByteArray(5000, '[') + QByteArray(5000, ']');
    const struct {
        int status;
        QByteArray body;
        QString text; // what is read, or behind "!" the failure
    } replies[] = {
        {200, "{}", ""},
        {200, "", ""},
        {200, "not json", ""},
        {200, "[1]", ""},
        {200, nested, ""},
        {200, "{\"content\":[{\"type\":\"text\",\"text\":\"\xff\"}]}", ""},
        {200, R"({"content":{"type":"text","text":"no list"}})", ""},
        {200, R"({"content":[{"type":"text","text":"a"},7]})", ""},
        {200,
         R"({"content":[{"type":"text","text":" a"},{"type":"text","text":7},{"type":8},{"text":"b"},)"
         R"({"type":"text","text":"\u00e9\n\t"}],"stop_reason":null})",
         "a\u00e9"},
        {200, R"({"content":[{"type":"text","text":"a"}],"stop_reason":["refusal"],"usage":1e999})", ""},
        {200, R"({"content":[{"type":"text","text":"a"}],"stop_reason":["refusal"],"usage":1e99})", "a"},
        {200, R"({"stop_reason":"refusal"})", "!Claude declined this request."},
        {200, R"({"stop_reason":"refusal","stop_details":{"explanation":7}})",
         "!Claude declined this request."},
        {200, R"({"stop_reason":"refusal","stop_details":{"explanation":"private"}})",
         "!Claude declined this request: private"},
        {500, "<html>", "!Claude API error (HTTP 500)."},
        {0, "", "!Claude API error (HTTP 0)."},
        {201, R"({"content":[{"type":"text","text":"a"}]})", "!Claude API error (HTTP 201)."},
        {413, R"({"error":{"message":"too big"}})", "!too big"},
        {401, R"({"error":{"message":7}})", "!Claude API error (HTTP 401)."},
        {429, R"({"error":"slow down"})", "!Claude API error (HTTP 429)."},
    };
    for (const auto &[status, body, text] : replies) {
        const auto read = ClaudeClient::read({status, body});
        EXPECT_EQ(read ? *read : "!" + read.error().message, text) << body.left(90).toStdString();
    }
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

TEST(Uploader, TellsEachFormOfReplyApart)
{
    const struct {
        int status;
        QByteArray body;
        QString told; // the link, or behind "!" the failure
    } replies[] = {
        {200, R"({"data":{"link":"https://i.example/a%20b.png?x=1"}})", "https://i.example/a%20b.png?x=1"},
        {200, R"({"data":{"link":"http://a b"}})", "!Imgur upload failed."},
        {200, R"({"data":{"link":""}})", "!Imgur upload failed."},
        {200, R"({"data":{"link":7,"error":"no room"}})", "!no room"},
        {200, R"({"data":[{"link":"https://i.example/a.png"}]})", "!Imgur upload failed."},
        {201, R"({"data":{"link":"https://i.example/a.png"}})", "!Imgur upload failed."},
        {400, R"({"data":{"error":"over capacity"}})", "!over capacity"},
        {400, R"({"data":{"error":{"message":"bad type"}}})", "!bad type"},
        {400, R"({"data":{"error":{"message":["bad"]}}})", "!Imgur upload failed."},
        {502, "<html>", "!Imgur upload failed."},
        {200, "", "!Imgur upload failed."},
        {200, "{\"data\":{\"link\":\"https://i.example/\xff\"}}", "!Imgur upload failed."},
    };
    for (const auto &[status, body, told] : replies) {
        const auto link = Uploader::read({status, body});
        EXPECT_EQ(link ? link->toString(QUrl::FullyEncoded) : "!" + link.error().message, told)
            << body.toStdString();
    }
}

TEST_F(Online, PassesTheNetworksTroubleOnUnchanged)
{
    FakeHttp broken;
    broken.answers = {FakeHttp::failed(FakeHttp::Failure::Silence)};
    const QString told = broken.answers.first().error().message;
    EXPECT_EQ(ClaudeClient(broken, settings).ask("?", picture, "low").result().error().message, told);
    EXPECT_EQ(Uploader(broken, settings).imgur(picture).result().error().message, told);
    ASSERT_EQ(broken.requests.size(), 2) << "nothing is tried again";
    EXPECT_EQ(broken.requests[0].timeout, std::chrono::seconds(120));
    EXPECT_EQ(broken.requests[1].timeout, std::chrono::seconds(60));
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
