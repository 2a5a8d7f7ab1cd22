#include "platform/contracts/http_contract.h"

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(HttpContract);

TEST_P(HttpContract, CountsEveryStatusAsAnAnswerAndKeepsItsBytes)
{
    QByteArray big(5'000'000, '\0');
    for (qsizetype i = 0; i < big.size(); ++i)
        big[i] = char(i * 7 + i / 251);
    const std::pair<int, QByteArray> answers[] = {{200, ""},     {200, QByteArray("\0\xff\r\n\r\n{}", 8)},
                                                  {200, big},    {302, "elsewhere"},
                                                  {401, ""},     {404, "<html>"},
                                                  {500, "oops"}, {529, "busy"}};
    for (const auto &[status, body] : answers) {
        const auto answer = m_world->http().send({.url = m_world->answering(status, body)}).result();
        ASSERT_TRUE(answer) << status << ": " << answer.error().message.toStdString();
        EXPECT_EQ(answer->status, status);
        EXPECT_TRUE(answer->body == body) << status << ", " << answer->body.size() << " bytes";
    }
}

TEST_P(HttpContract, SendsMethodPathHeadersAndBodyAsGiven)
{
    QUrl url = m_world->answering(200, "ok");
    url.setPath("/3/image");
    QByteArray body(300'000, 'x');
    body.replace(1000, 4, QByteArray("\0\xff\r\n", 4));
    ASSERT_TRUE(m_world->http()
                    .send({.method = "POST",
                           .url = url,
                           .headers = {{"x-api-key", "key"}, {"Content-Type", "a/b; c=d"}},
                           .body = body})
                    .result());
    const HttpWorld::Arrival arrival = m_world->lastArrival();
    EXPECT_EQ(arrival.method, "POST");
    EXPECT_EQ(arrival.path, "/3/image");
    EXPECT_TRUE(arrival.heads.contains("x-api-key: key\n")) << arrival.heads.toStdString();
    EXPECT_TRUE(arrival.heads.contains("content-type: a/b; c=d\n")) << arrival.heads.toStdString();
    EXPECT_TRUE(arrival.body == body) << arrival.body.size() << " bytes";
}

TEST_P(HttpContract, TellsEachTroubleInOneSentence)
{
    using Trouble = HttpWorld::Trouble;
    const std::pair<Trouble, QString> troubles[] = {
        {Trouble::Silence, "didn't answer in time"},
        {Trouble::HalfAReply, "closed the connection before its answer was complete"},
        {Trouble::NoConnection, "refuses the connection"},
        {Trouble::NoSuchHost, "can't be found"}};
    for (const auto &[trouble, words] : troubles) {
        const auto answer =
            m_world->http()
                .send({.url = m_world->troubled(trouble),
                       .timeout = std::chrono::milliseconds(trouble == Trouble::Silence ? 80 : 20000)})
                .result();
        ASSERT_FALSE(answer) << words.toStdString();
        EXPECT_EQ(answer.error().kind, Error::Kind::Failed);
        EXPECT_TRUE(answer.error().message.contains(words)) << answer.error().message.toStdString();
        EXPECT_TRUE(answer.error().message.endsWith(words.startsWith("can't") ? "?" : "."));
    }
    EXPECT_TRUE(m_world->http().send({.url = m_world->answering(200, "again")}).result())
        << "a trouble is not for ever";
}

TEST_P(HttpContract, RefusesALineBreakInAHeader)
{
    const QUrl url = m_world->answering(200, "ok");
    for (const auto &[name, value] : {std::pair<QByteArray, QByteArray>("x-api-key", "a\r\nHost: b"),
                                      {"x\nHost", "b"},
                                      {"x-api-key", QByteArray("a\0b", 3)}}) {
        const auto answer = m_world->http().send({.url = url, .headers = {{name, value}}}).result();
        ASSERT_FALSE(answer);
        EXPECT_EQ(answer.error().kind, Error::Kind::Invalid);
    }
}

TEST_P(HttpContract, AnswersSeveralAtOnce)
{
    const QUrl url = m_world->answering(200, "many");
    QList<QFuture<Result<HttpResponse>>> futures;
    for (int i = 0; i < 12; ++i)
        futures.append(m_world->http().send({.method = "POST", .url = url, .body = "x"}));
    for (auto &future : futures) {
        ASSERT_TRUE(future.result());
        EXPECT_EQ(future.result()->body, "many");
        EXPECT_EQ(future.resultCount(), 1);
    }
}

TEST_P(HttpContract, FinishesWhatIsUnderWayWhenItEnds)
{
    auto future = m_world->http().send({.url = m_world->troubled(HttpWorld::Trouble::Silence)});
    m_world->end();
    ASSERT_TRUE(future.isFinished());
    EXPECT_FALSE(future.result());
}
