#include "fakes/fake_recognition.h"
#include "platform/session/recognition_loader.h"
#include "support/temporary_folder.h"

#include <QPainter>
#include <QProcess>
#include <gtest/gtest.h>

namespace {

struct Ground {
    QColor paper;
    QColor pen;
};

QImage page(const QStringList &lines, const Ground &ground, const QString &family, int pixels)
{
    QImage image(900, 60 + int(lines.size()) * pixels * 2, QImage::Format_RGB32);
    image.fill(ground.paper);
    QPainter painter(&image);
    QFont font(family);
    font.setPixelSize(pixels);
    painter.setFont(font);
    painter.setPen(ground.pen);
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(QPoint(30, 40 + i * pixels * 2), lines[i]);
    return image;
}

QStringList textsOf(TextEngine &engine, const QImage &image, const TextLanguages &languages = {"en_US"})
{
    const auto lines = engine.recognize(image, languages).result();
    EXPECT_TRUE(lines) << lines.error().message.toStdString();
    QStringList texts;
    for (const RecognizedLine &line : lines.value_or(QList<RecognizedLine>()))
        texts.append(line.text);
    return texts;
}

} // namespace

// What every text engine keeps to, the stand-in as well as the machine's.
class TextEngineContract : public testing::TestWithParam<bool> {
protected:
    std::unique_ptr<TextEngine> engine()
    {
        if (GetParam())
            return makeTextEngine();
        auto fake = std::make_unique<FakeTextEngine>();
        RecognizedLine line{"Port office", QRectF(0.1, 0.4, 0.5, 0.2), {}, 1};
        for (int i = 0; i < line.text.size(); ++i)
            line.characters.append(line.text[i] == ' ' ? QRectF() : QRectF(0.1 + i * 0.04, 0.4, 0.04, 0.2));
        fake->answer = QList{line};
        return fake;
    }
};

INSTANTIATE_TEST_SUITE_P(FakeAndReal, TextEngineContract, testing::Bool());

TEST_P(TextEngineContract, GivesABoxForEachCharacterInsideItsLineAndThePicture)
{
    const QImage image = page({"Port office"}, {Qt::white, Qt::black}, "DejaVu Sans", 20);
    const auto lines = engine()->recognize(image, {"en_US"}).result();
    ASSERT_TRUE(lines);
    ASSERT_EQ(lines->size(), 1);
    const RecognizedLine &line = lines->first();
    EXPECT_EQ(line.text, "Port office");
    ASSERT_EQ(line.characters.size(), line.text.size());
    EXPECT_TRUE(line.characters[4].isEmpty()) << "a blank has no box";
    double last = 0;
    for (qsizetype i = 0; i < line.text.size(); ++i) {
        if (line.text[i] == ' ')
            continue;
        EXPECT_FALSE(line.characters[i].isEmpty()) << i;
        EXPECT_GT(line.characters[i].center().x(), last) << i;
        EXPECT_TRUE(QRectF(0, 0, 1, 1).contains(line.characters[i])) << i;
        last = line.characters[i].center().x();
    }
}

TEST(TesseractEngine, ReadsLightDarkAndColouredGrounds)
{
    const QStringList lines{"Notes from the harbour meeting", "Thank you for coming at 17:00"};
    const auto engine = makeTextEngine();
    for (const Ground &ground :
         {Ground{Qt::white, QColor(40, 40, 40)}, Ground{QColor(30, 31, 34), QColor(220, 220, 220)},
          Ground{QColor(52, 116, 240), Qt::white}, Ground{QColor(255, 243, 205), QColor(133, 77, 14)}})
        for (const int pixels : {14, 28})
            EXPECT_EQ(textsOf(*engine, page(lines, ground, "DejaVu Sans", pixels)), lines)
                << ground.paper.name().toStdString() << " " << pixels;
}

TEST(TesseractEngine, ReadsButtonsAndKeepsCellsOfATableApart)
{
    QImage image = page({}, {QColor(30, 31, 34), Qt::white}, "DejaVu Sans", 14);
    image = image.copy(0, 0, 900, 200);
    QPainter painter(&image);
    QFont font("DejaVu Sans");
    font.setPixelSize(14);
    painter.setFont(font);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(200, 70, 70));
    painter.drawRoundedRect(QRectF(40, 60, 120, 32), 6, 6);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(40, 60, 120, 32), Qt::AlignCenter, "Turn off");
    painter.drawText(QPoint(300, 80), "Telephone");
    painter.drawText(QPoint(600, 80), "Address");
    painter.end();
    auto texts = textsOf(*makeTextEngine(), image);
    texts.sort();
    EXPECT_EQ(texts, (QStringList{"Address", "Telephone", "Turn off"}));
}

TEST(TesseractEngine, PutsBoxesAroundTheInk)
{
    const QImage image =
        page({"mail to quay@lighthouse.example today"}, {Qt::white, Qt::black}, "DejaVu Sans", 16);
    const auto lines = makeTextEngine()->recognize(image, {}).result();
    ASSERT_TRUE(lines);
    ASSERT_EQ(lines->size(), 1);
    const qsizetype at = lines->first().text.indexOf("quay");
    ASSERT_GE(at, 0);
    const QRectF box = lines->first().boxOf(at, 23);
    // What is left when the box is wiped must hold no more of the address.
    QFont font("DejaVu Sans");
    font.setPixelSize(16);
    const QFontMetricsF metrics(font);
    const double left = 30 + metrics.horizontalAdvance("mail to ");
    const double right = left + metrics.horizontalAdvance("quay@lighthouse.example");
    EXPECT_NEAR(box.left() * image.width(), left, 3);
    EXPECT_NEAR(box.right() * image.width(), right, 3);
    EXPECT_GT(box.height() * image.height(), metrics.height() * 0.85);
}

TEST(TesseractEngine, KeepsTheFirstLettersOfTextThatBeginsAtAnEdge)
{
    const auto engine = makeTextEngine();
    const QStringList lines{"MAIL from the harbour", "Hours are in the hall", "Keep this door shut",
                            "Boats leave at noon"};
    QFont font("DejaVu Sans Mono");
    font.setPixelSize(14);
    const QFontMetrics metrics(font);
    // A window on a desktop, with and without a border; light, dark, and one as tight as a terminal.
    for (const Ground &ground : {Ground{Qt::white, Qt::black}, Ground{QColor(29, 31, 33), Qt::white}}) {
        for (const int border : {0, 1, 3}) {
            for (const int gap : {border == 0 ? 1 : 2, 3}) {
                const QRect window(60, 50, 420, int(lines.size()) * metrics.lineSpacing() + 4);
                QImage image(560, 220, QImage::Format_RGB32);
                image.fill(QColor(58, 110, 165));
                QPainter painter(&image);
                painter.fillRect(window.adjusted(-border, -border, border, border), QColor(90, 90, 90));
                painter.fillRect(window, ground.paper);
                painter.setFont(font);
                painter.setPen(ground.pen);
                for (int i = 0; i < lines.size(); ++i) {
                    const int bearing = metrics.boundingRect(lines[i][0]).left();
                    painter.drawText(QPoint(window.left() + gap - bearing,
                                            window.top() + 2 + metrics.ascent() + i * metrics.lineSpacing()),
                                     lines[i]);
                }
                painter.end();
                EXPECT_EQ(textsOf(*engine, image), lines)
                    << ground.paper.name().toStdString() << " border " << border << " gap " << gap;
            }
        }
    }
}

// Rows as a terminal sets them: descenders, commas and underscores come close to the letters below, or touch
// them.
TEST(TesseractEngine, KeepsTightRowsApartAndTheirMarksWithThem)
{
    const auto engine = makeTextEngine();
    const QStringList lines{
        "export QUAY_MAIL=quay_desk@harbour.example", "-rw-r--r-- 1 root root 613 Jun 24 13:58 tide.txt",
        "[harbour] jetty_gate: open, pump_gauge; ok", "EUR 2,501.99 (paid), \"Fully booked\""};
    for (const Ground &ground : {Ground{QColor(253, 246, 227), QColor(60, 80, 90)},
                                 Ground{QColor(20, 24, 28), QColor(210, 215, 220)}}) {
        for (const auto &[pixels, smoothing] :
             {std::pair{13, QFont::PreferAntialias}, std::pair{12, QFont::NoAntialias},
              std::pair{24, QFont::PreferAntialias}}) {
            QFont font("DejaVu Sans Mono");
            font.setPixelSize(pixels);
            font.setStyleStrategy(smoothing);
            const int pitch = QFontMetrics(font).ascent() + QFontMetrics(font).descent();
            QImage image(60 * pixels, 40 + 8 * pitch, QImage::Format_RGB32);
            image.fill(ground.paper);
            QPainter painter(&image);
            painter.setFont(font);
            painter.setPen(ground.pen);
            for (int i = 0; i < 2 * lines.size(); ++i)
                painter.drawText(QPoint(4, 20 + pitch * (i + 1)), lines[i % lines.size()]);
            painter.end();
            EXPECT_EQ(textsOf(*engine, image).join('\n').toStdString(),
                      (lines + lines).join('\n').toStdString())
                << ground.paper.name().toStdString() << " " << pixels;
        }
    }
}

TEST(TesseractEngine, LeavesSignsThatItIsSureOfAsTheyStand)
{
    const QStringList lines{"Tickets cost 5€50 a day or GB£12 a week", "The ferry takes 100¥50 for a car",
                            "Tolerance ±0.5 mm, then +0.7 mm", "Vidéo4K60 and Qualité1080p are offered"};
    for (const int pixels : {14, 22})
        EXPECT_EQ(textsOf(*makeTextEngine(), page(lines, {Qt::white, Qt::black}, "DejaVu Sans", pixels)),
                  lines)
            << pixels;
}

// Of fonts with ligatures and without, at the size of small editors.
TEST(TesseractEngine, ReadsTheSignsOfPrograms)
{
    const QStringList lines{"std::vector<int> rows{1, 2, 3};",
                            "printf(\"total\", total, name);",
                            "value += step * (high - low) / 2;",
                            "for (int i = 0; i != count; ++i) {",
                            "    left++, value = name & 0xff;",
                            "    if (a != b || c <= d && !done) return -1;",
                            "    while (left >= 0 && mask[left] == 1) --left;",
                            "    x->next = y ? *y : nullptr; // O(n log n)",
                            "}"};
    QStringList expected;
    for (const QString &line : lines)
        expected.append(line.trimmed());
    for (const char *family : {"DejaVu Sans Mono", "JetBrains Mono"})
        for (const Ground &ground :
             {Ground{Qt::white, QColor(35, 35, 40)}, Ground{QColor(28, 30, 36), QColor(222, 224, 228)}})
            EXPECT_EQ(textsOf(*makeTextEngine(), page(lines, ground, family, 11)).join('\n').toStdString(),
                      expected.join('\n').toStdString())
                << family;
}

TEST(TesseractEngine, ReadsWhatIsStruckThroughUnderlinedOrVeryLarge)
{
    QImage image(900, 320, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QFont font("DejaVu Sans");
    font.setPixelSize(96);
    painter.setFont(font);
    painter.drawText(QPoint(30, 130), "Boats 4831 7755");
    font.setPixelSize(16);
    font.setUnderline(true);
    painter.setFont(font);
    painter.drawText(QPoint(30, 220), "Notes for jetty gauges");
    font.setUnderline(false);
    font.setStrikeOut(true);
    painter.setFont(font);
    painter.drawText(QPoint(30, 270), "4831 0962 7755");
    painter.end();
    auto texts = textsOf(*makeTextEngine(), image);
    texts.sort();
    EXPECT_EQ(texts, (QStringList{"4831 0962 7755", "Boats 4831 7755", "Notes for jetty gauges"}));
}

TEST(TesseractEngine, LeavesIconsOutThatStandAlone)
{
    QImage image =
        page({"Rota for the summer"}, {Qt::white, Qt::black}, "DejaVu Sans", 16).copy(0, 0, 900, 200);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(60, 60, 60), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QList<QPolygon> icons{{{0, 8}, {5, 13}, {15, 2}},           // a tick
                                {{2, 2}, {14, 14}},                   // a stroke
                                {{0, 14}, {5, 6}, {9, 10}, {15, 2}}}; // a chart
    for (int i = 0; i < icons.size(); ++i)
        painter.drawPolyline(icons[i].translated(60 + 160 * i, 140));
    painter.end();
    EXPECT_EQ(textsOf(*makeTextEngine(), image).join("|").toStdString(), "Rota for the summer");
}

TEST(TesseractEngine, FindsNothingInEmptyPictures)
{
    const auto engine = makeTextEngine();
    for (const QSize size : {QSize(), QSize(1, 1), QSize(3, 400), QSize(640, 480)}) {
        QImage image(size, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        EXPECT_EQ(textsOf(*engine, image), QStringList()) << size.width();
    }
}

TEST(TesseractEngine, ReadsEachLineOfAPictureTooTallForOneGoOnce)
{
    const QImage line = page({"Rota for the summer"}, {Qt::white, Qt::black}, "DejaVu Sans", 18);
    QImage tall(line.width(), 24000, QImage::Format_RGB32);
    tall.fill(Qt::white);
    QPainter painter(&tall);
    QStringList expected;
    for (int y = 0; y + line.height() < tall.height(); y += 1111) {
        painter.drawImage(0, y, line);
        expected.append("Rota for the summer");
    }
    painter.end();
    EXPECT_EQ(textsOf(*makeTextEngine(), tall), expected);
}

TEST(TesseractEngine, ReadsEachLineInItsLanguageWhateverTheUsersIs)
{
    const QStringList lines{"Boats leave the harbour before noon",
                            "Größere Boote müssen ihre Ankunft vorher anmelden; Gebühr 12,50 €.",
                            "Après la tempête, les élèves ont nettoyé la forêt près du château.",
                            "Proszę zamknąć okna, kiedy zbliża się gwałtowna burza.",
                            "El próximo miércoles habrá una reunión en el salón común.",
                            "Übernehmen",
                            "Keys sk_live_4mQz81LxYpTt7Ke9Wd2A are given to visitors"};
    const auto engine = makeTextEngine();
    const QImage image = page(lines, {Qt::white, Qt::black}, "DejaVu Sans", 16);
    for (const char *user : {"en_US", "de_DE", "pl_PL"})
        EXPECT_EQ(textsOf(*engine, image, {user}).join('\n').toStdString(), lines.join('\n').toStdString())
            << user;
}

TEST(TesseractEngine, ReadsInTheNamedLanguageAloneAndSaysWhichThereAreWhenItIsMissing)
{
    const auto engine = makeTextEngine();
    const QImage image = page({"Größere Boote müssen warten"}, {Qt::white, Qt::black}, "DejaVu Sans", 16);
    const auto alone = [](const QString &name) {
        return TextLanguages({name}, TextLanguages::Others::Never);
    };
    EXPECT_EQ(textsOf(*engine, image, alone("de")), QStringList{"Größere Boote müssen warten"});
    EXPECT_EQ(textsOf(*engine, image, alone("deu")), QStringList{"Größere Boote müssen warten"});
    EXPECT_FALSE(textsOf(*engine, image, alone("eng")).first().contains("müssen"));
    const auto missing = engine->recognize(image, alone("xx")).result();
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().kind, Error::Kind::Invalid);
    EXPECT_TRUE(missing.error().message.contains("xx") && missing.error().message.contains("deu"));
}

TEST(TesseractEngine, SkipsLanguagesThatAreNotThereAndSaysWhenNoneIs)
{
    const QImage image = page({"Port office"}, {Qt::white, Qt::black}, "DejaVu Sans", 20);
    const auto lines = makeTextEngine()->recognize(image, {"xx_YY", "tlh"}).result();
    ASSERT_TRUE(lines);
    EXPECT_EQ(lines->first().text, "Port office");

    const TemporaryFolder empty;
    qputenv("TESSDATA_PREFIX", empty.path().toUtf8());
    const auto none = makeTextEngine()->recognize(image, {"en_US"}).result();
    ASSERT_FALSE(none);
    EXPECT_EQ(none.error().kind, Error::Kind::Unavailable);
    QFile broken(empty.path("eng.traineddata"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("no data at all");
    broken.close();
    const auto unreadable = makeTextEngine()->recognize(image, {"en_US"}).result();
    ASSERT_FALSE(unreadable);
    EXPECT_EQ(unreadable.error().kind, Error::Kind::Unavailable);
    qunsetenv("TESSDATA_PREFIX");
}

TEST(TesseractEngine, ReadsSeveralPicturesAtOnce)
{
    const auto engine = makeTextEngine();
    const QStringList texts{"Bakery order", "Radio club",  "Tide tables",
                            "Summer rota",  "Port office", "Railing paint"};
    QList<QFuture<Result<QList<RecognizedLine>>>> readings;
    for (const QString &text : texts)
        readings.append(
            engine->recognize(page({text}, {Qt::white, Qt::black}, "DejaVu Sans", 20), {"en_US"}));
    for (int i = 0; i < texts.size(); ++i) {
        const auto lines = readings[i].result();
        ASSERT_TRUE(lines);
        ASSERT_EQ(lines->size(), 1);
        EXPECT_EQ(lines->first().text, texts[i]);
    }
}

TEST(BlazeFace, SaysInOneSentenceThatItsModelIsMissingOrBroken)
{
    // The program finds the model beside its own folder: a copy of it elsewhere finds what is put there.
    const TemporaryFolder place;
    ASSERT_TRUE(QDir().mkpath(place.path("bin")) && QDir().mkpath(place.path("share/lumenpost")));
    ASSERT_TRUE(QFile::copy(LUMENPOST_BINARY_DIR "/bin/lumenpost", place.path("bin/lumenpost")));
    ASSERT_TRUE(QFile::link(LUMENPOST_BINARY_DIR "/lib", place.path("lib")));
    const QString picture = place.path("picture.png");
    ASSERT_TRUE(page({"Nobody"}, {Qt::white, Qt::black}, "DejaVu Sans", 20).save(picture));
    const auto sentence = [&] {
        QProcess program;
        program.start(place.path("bin/lumenpost"), {"faces", picture});
        EXPECT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitCode(), 1);
        return QString::fromUtf8(program.readAllStandardError());
    };
    EXPECT_EQ(sentence(), "lumenpost: The model for finding faces is missing; install Lumenpost again.\n");
    QFile whole(LUMENPOST_BINARY_DIR "/share/lumenpost/face_detection.onnx");
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    for (const QByteArray &content : {QByteArray(), QByteArray("no model"), whole.read(whole.size() / 2)}) {
        QFile model(place.path("share/lumenpost/face_detection.onnx"));
        ASSERT_TRUE(model.open(QIODevice::WriteOnly));
        model.write(content);
        model.close();
        EXPECT_EQ(sentence(),
                  "lumenpost: The model for finding faces can't be used; install Lumenpost again.\n")
            << content.size();
    }
}
