#include "platform/recognition/language_guess.h"
#include "platform/recognition/languages.h"
#include "platform/recognition/weave.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

// A reading whose signs are ten pixels wide, all as sure as told; a sign in `doubted` by less.
std::vector<ReadSign> reading(const QString &text, double confidence, const QString &doubted = {})
{
    std::vector<ReadSign> signs;
    for (qsizetype i = 0; i < text.size(); ++i)
        if (text[i] != ' ')
            signs.push_back({.text = text[i],
                             .box = QRectF(10.0 * double(i), 0, 9, 20),
                             .confidence = doubted.contains(text[i]) ? confidence - 0.1 : confidence,
                             .blankBefore = i > 0 && text[i - 1] == ' '});
    return signs;
}

QString textOf(const std::vector<ReadSign> &signs)
{
    QString text;
    for (const ReadSign &sign : signs)
        text += (sign.blankBefore ? " " : "") + sign.text;
    return text;
}

} // namespace

TEST(Weave, TakesWordsFromTheirLanguageAndKeysFromTheSurerReading)
{
    EXPECT_EQ(
        textOf(woven(reading("Schlussel ghp_x4Jq8 bei", 0.99), reading("Schlüssel ghp_x4]g8 bei", 0.98))),
        "Schlüssel ghp_x4Jq8 bei");
    EXPECT_EQ(textOf(woven(reading("ab 1Z,50 Euro", 0.99, "Z"), reading("ab 12,50 Euro", 0.99))),
              "ab 12,50 Euro");
    // Blanks that only one of them has neither double a sign nor lose one.
    EXPECT_EQ(
        textOf(woven(reading("kosten 7,00€ fur Gaste", 0.97), reading("kosten 7,00 € für Gäste", 0.98))),
        "kosten 7,00 € für Gäste");
    EXPECT_EQ(textOf(woven(reading("a b", 0.9), {})), "a b");
    EXPECT_EQ(textOf(woven({}, reading("a b", 0.9))), "a b");
}

TEST(LanguageGuess, TellsTheLanguageOfWordsThatLostTheirAccents)
{
    const QStringList all{"eng", "deu", "fra", "pol", "spa"};
    EXPECT_EQ(likelyLanguage("Schlussel flr die Duschraume gibt es gegen eine kleine Gebtihr", all), "deu");
    EXPECT_EQ(likelyLanguage("Paramétres Enregistrer sous Apercu", all), "fra");
    EXPECT_EQ(likelyLanguage("Prosze zamknac okna kiedy zbliza sie gwattowna burza", all), "pol");
    EXPECT_EQ(likelyLanguage("before locker office who crew", all), "eng");
    EXPECT_EQ(likelyLanguage("", all), QString());
    EXPECT_EQ(likelyLanguage("Hafenmeister bleibt geschlossen", {"eng", "pol"}), QString());
}

TEST(Languages, PutTheUsersFirstThenEnglishThenAllThatAreInstalled)
{
    const TemporaryFolder data;
    for (const char *name : {"deu", "eng", "fra", "osd"}) {
        QFile file(data.path(QString(name) + ".traineddata"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    qputenv("TESSDATA_PREFIX", data.path().toUtf8());
    EXPECT_EQ(readingOrder({"fr_CA", "xx"})->names, (QStringList{"fra", "eng", "deu"}));
    EXPECT_EQ(readingOrder({})->names, (QStringList{"eng", "deu", "fra"}));
    EXPECT_EQ(readingOrder({{"de_AT"}, TextLanguages::Others::Never})->names, QStringList{"deu"});
    const auto missing = readingOrder({{"de", "pl"}, TextLanguages::Others::Never});
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().kind, Error::Kind::Invalid);
    qunsetenv("TESSDATA_PREFIX");
}
