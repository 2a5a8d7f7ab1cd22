#include "guide_stage.h"
#include "platform/network/network_http.h"
#include "support/loopback_server.h"
#include "support/printers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// The guide's captions by way of a real server.
class GuideOnline : public testing::Test, protected GuideStage {
protected:
    GuideOnline() { prefs.setApiKey("key"); }
    ~GuideOnline() override { qunsetenv("LUMENPOST_MESSAGES_URL"); }

    NetworkHttp http;
    ClaudeClient online{http, prefs};
};

QByteArray text(const QByteArray &text)
{
    return LoopbackServer::reply(R"({"content":[{"type":"text","text":")" + text + R"("}]})");
}

TEST_F(GuideOnline, TakesEveryFormOfReplyAndKeepsACaptionThatGotNone)
{
    const struct {
        QByteArray reply;
        QString caption;
    } cases[] = {
        {text("Press Send"), "Press Send"},
        {text("\xe2\x80\x9cPress Send\xe2\x80\x9d "), "Press Send"},
        {text("\\\"Press \\\"Send\\\"\\\""), "Press \"Send"},
        {text("<script>x</script>"), "<script>x</script>"},
        {LoopbackServer::reply(
             R"({"content":[{"type":"thinking","thinking":"hm"},{"type":"text","text":"Press "},{"type":"text","text":"OK"}]})"),
         "Press OK"},
        {text(""), "old"},
        {text(" \xe2\x80\x9c\xe2\x80\x9d "), "old"},
        {LoopbackServer::reply(R"({"content":[]})"), "old"},
        {LoopbackServer::reply(R"({"stop_reason":"refusal","content":[]})"), "old"},
        {LoopbackServer::reply("no json"), "old"},
        {LoopbackServer::reply(R"({"error":{"message":"overloaded"}})", "529 Overloaded"), "old"},
        {"HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n{", "old"},
        {text("Last"), "Last"},
    };
    QByteArrayList replies;
    QList<GuideStep> steps;
    for (const auto &each : cases) {
        replies.append(each.reply);
        steps.append(step("old"));
    }
    steps[1].caption = "Click ann@example.org";
    const LoopbackServer server(replies, {});
    qputenv("LUMENPOST_MESSAGES_URL", server.url());
    model = std::make_unique<StepsGuideModel>(
        steps, "Guide", capture, nullptr,
        StepsGuideModel::Parts{recognizer, online, prefs, notices, exports});
    settle();
    model->improveCaptions();
    ASSERT_TRUE(QTest::qWaitFor([this] { return model->isImproving(); }));
    settle();
    for (qsizetype i = 0; i < std::ssize(cases); ++i)
        EXPECT_EQ(model->steps()[i].caption, cases[i].caption) << "reply " << i;
    const QByteArrayList requests = server.requests();
    ASSERT_EQ(requests.size(), std::ssize(cases));
    EXPECT_FALSE(requests[1].contains("ann@example.org"));
    const auto body = QJsonDocument::fromJson(requests[2].mid(requests[2].indexOf("\r\n\r\n") + 4));
    const QJsonArray content = body["messages"][0]["content"].toArray();
    EXPECT_EQ(content[0]["type"], "image");
    EXPECT_TRUE(
        content[1]["text"].toString().startsWith("This screenshot is step 3 of a how-to guide. A purple "
                                                 "circle marks where the user clicked.\nThe current "
                                                 "instruction is: \"old\"."));
}

} // namespace
