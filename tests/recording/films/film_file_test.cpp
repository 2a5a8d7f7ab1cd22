#include "platform/movies.h"
#include "platform/session/media_loader.h"
#include "recording/captions.h"
#include "recording/movie_export.h"

#include "recording/films/film_facts.h"

#include <QPainter>
#include <QTemporaryDir>
#include <cmath>
#include <gtest/gtest.h>
#include <thread>

using std::chrono::microseconds;
using std::chrono::milliseconds;

namespace {

constexpr QSize kSize(320, 180);

// A bar that stands at x = 10 · n in frame n, on a ground of a known colour.
QImage barPicture(int n)
{
    QImage picture(kSize, QImage::Format_RGB32);
    picture.fill(QColor(40, 90, 160));
    QPainter(&picture).fillRect(n * 10 % kSize.width(), 0, 10, kSize.height(), Qt::white);
    return picture;
}

int barOf(const QImage &picture)
{
    const int y = picture.height() / 2;
    for (int x = 5; x < picture.width(); x += 10) {
        if (qRed(picture.pixel(x, y)) > 150)
            return x / 10;
    }
    return -1;
}

FilmFrame frameOf(const QImage &picture)
{
    return {picture, {}, QRect(QPoint(), picture.size()), {}};
}

// Films through the real encoder.
class FilmFiles : public testing::Test {
protected:
    // A frame each 100 ms, and a tone in each track.
    QString recorded(const QString &name, int frames, const QList<SoundSource> &sounds = {},
                     const std::function<void(MovieWriter &)> &atEnd = {})
    {
        const QString path = m_folder.filePath(name);
        auto writer = m_movies->record(path, {kSize, sounds}, [](const Error &) {});
        EXPECT_TRUE(writer) << qPrintable(writer ? QString() : writer.error().message);
        for (int n = 0; n < frames; ++n) {
            while ((*writer)->counts().frames + 4 < n) // the queue is short
                std::this_thread::yield();
            (*writer)->write(frameOf(barPicture(n)), milliseconds(100 * n));
            for (qsizetype track = 0; track < sounds.size(); ++track)
                (*writer)->writeSound(track, tone(SoundSources::channels(sounds[track]), 4800));
        }
        if (atEnd)
            atEnd(**writer);
        EXPECT_TRUE((*writer)->close());
        return path;
    }
    static std::vector<float> tone(int channels, int count)
    {
        std::vector<float> samples;
        for (int i = 0; i < count; ++i)
            samples.insert(samples.end(), std::size_t(channels), float(0.5 * std::sin(i * 0.0576)));
        return samples;
    }
    QString finished(const QString &name, int frames, const QList<SoundSource> &sounds = {})
    {
        const QString growing = recorded(name + ".recording", frames, sounds);
        const QString target = m_folder.filePath(name);
        const auto made = m_movies->finish(growing, target, milliseconds(100 * frames));
        EXPECT_TRUE(made) << qPrintable(made ? QString() : made.error().message);
        EXPECT_FALSE(QFile::exists(growing));
        return target;
    }

    QTemporaryDir m_folder;
    std::unique_ptr<Movies> m_movies = makeMovies();
};

} // namespace

TEST_F(FilmFiles, AreOrdinaryFilmsWithTheToldProperties)
{
    const FilmFacts facts(finished("a.mov", 40, {SoundSource::System, SoundSource::Microphone}));
    EXPECT_TRUE(facts.format("format_name").contains("mov"));
    EXPECT_NEAR(facts.format("duration").toDouble(), 4.0, 0.03);
    ASSERT_EQ(facts.streams(), 3);
    for (const auto &[key, value] :
         {std::pair("codec_name", "h264"), std::pair("pix_fmt", "yuv420p"), std::pair("color_space", "bt709"),
          std::pair("color_primaries", "bt709"), std::pair("color_transfer", "bt709"),
          std::pair("color_range", "tv"), std::pair("width", "320"), std::pair("height", "180"),
          std::pair("nb_frames", "40")})
        EXPECT_EQ(facts.of(0, key), value) << key;
    EXPECT_NEAR(facts.of(0, "duration").toDouble(), 4.0, 0.001) << "the last picture stays to the end";
    EXPECT_EQ(facts.of(1, "channels"), "2");
    EXPECT_EQ(facts.of(2, "channels"), "1");
    EXPECT_NEAR(facts.of(1, "duration").toDouble(), 4.0, 0.03);
    EXPECT_TRUE(facts.startsQuickly());
}

// Greens were once two levels too dark, in each picture of a film.
TEST_F(FilmFiles, ShowColoursAsTheyWere)
{
    const QList<QColor> colors{Qt::white, QColor(128, 128, 128), QColor(40, 90, 160), QColor(200, 60, 30)};
    QImage picture(kSize, QImage::Format_RGB32);
    for (int i = 0; i < int(colors.size()); ++i)
        QPainter(&picture).fillRect(i * 80, 0, 80, kSize.height(), colors[i]);
    const QString path = m_folder.filePath("colours.mov");
    auto writer = m_movies->record(path, {kSize, {}}, [](const Error &) {});
    ASSERT_TRUE(writer);
    (*writer)->write(frameOf(picture), milliseconds(0));
    ASSERT_TRUE((*writer)->close());
    for (const QSize bounds : {QSize(), QSize(160, 90)}) {
        const auto frames = m_movies->frames(path, bounds);
        ASSERT_TRUE(frames);
        const QImage shown = (*frames)->at(0).value();
        for (int i = 0; i < int(colors.size()); ++i) {
            const QColor seen = shown.pixelColor(shown.width() * (2 * i + 1) / 8, shown.height() / 2);
            EXPECT_NEAR(seen.red(), colors[i].red(), 1) << i << ' ' << shown.width();
            EXPECT_NEAR(seen.green(), colors[i].green(), 1) << i << ' ' << shown.width();
            EXPECT_NEAR(seen.blue(), colors[i].blue(), 1) << i << ' ' << shown.width();
        }
    }
}

// As a process that was killed leaves it: no end was written, and the last piece may be torn.
TEST_F(FilmFiles, PlayWhereverTheyBreakOff)
{
    const QString whole = recorded("whole.recording", 60, {SoundSource::System});
    const qint64 size = QFileInfo(whole).size();
    for (const double part : {1.0, 0.97, 0.75}) {
        const QString torn = m_folder.filePath(QString("torn-%1.recording").arg(part));
        ASSERT_TRUE(QFile::copy(whole, torn));
        // Most of the file is the hole at its beginning.
        const qint64 hole = 2 << 20;
        ASSERT_TRUE(QFile::resize(torn, hole + qint64(double(size - hole) * part)));
        EXPECT_GE(FilmFacts(torn).format("duration").toDouble(), 6 * part - 1.1) << part;
        const QString target = torn + ".mov";
        ASSERT_TRUE(m_movies->finish(torn, target, std::nullopt)) << part;
        const auto info = m_movies->info(target);
        ASSERT_TRUE(info);
        EXPECT_GE(info->duration, 6 * part - 1.1) << part;
        EXPECT_TRUE(FilmFacts(target).decodesWithoutErrors()) << part;
    }
}

// A film that is too large to be copied in a moment becomes an ordinary one where it lies.
TEST_F(FilmFiles, BecomeOrdinaryInPlaceWhenThereIsNoRoom)
{
    const QString growing = recorded("big.recording", 60, {SoundSource::System, SoundSource::Microphone});
    // In the way of the copy.
    ASSERT_TRUE(QDir().mkdir(growing + ".finished.mov"));
    const QString target = m_folder.filePath("big.mov");
    const auto made = m_movies->finish(growing, target, milliseconds(6500));
    ASSERT_TRUE(made) << qPrintable(made.error().message + made.error().detail);
    const FilmFacts facts(target);
    EXPECT_EQ(facts.streams(), 3);
    EXPECT_EQ(facts.of(0, "nb_frames"), "60");
    EXPECT_NEAR(facts.of(0, "duration").toDouble(), 6.5, 0.001);
    EXPECT_TRUE(facts.startsQuickly());
    EXPECT_FALSE(facts.isFragmented());
    EXPECT_TRUE(facts.decodesWithoutErrors());
    const auto frames = m_movies->frames(target, {});
    ASSERT_TRUE(frames);
    for (const int n : {0, 31, 59, 12})
        EXPECT_EQ(barOf(*(*frames)->at(n * 0.1 + 0.05)), n % 32);
}

TEST_F(FilmFiles, NeverReplaceAnother)
{
    const QString growing = recorded("b.recording", 5);
    const QString target = m_folder.filePath("b.mov");
    QFile other(target);
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.close();
    EXPECT_FALSE(m_movies->finish(growing, target, std::nullopt));
    EXPECT_TRUE(QFile::exists(growing));
    EXPECT_EQ(QFileInfo(target).size(), 0);
}

TEST_F(FilmFiles, ShowTheRightPictureAtEveryTimeInAnyOrder)
{
    const QString film = finished("c.mov", 80);
    const auto frames = m_movies->frames(film, {});
    ASSERT_TRUE(frames);
    EXPECT_EQ((*frames)->info().size, kSize);
    for (const double time : {0.0, 0.05, 0.1, 0.1999, 3.0, 7.99, 2.5, 2.4999, 0.0, 100.0, -1.0, 6.25, 6.35}) {
        const auto picture = (*frames)->at(time);
        ASSERT_TRUE(picture);
        EXPECT_EQ(barOf(*picture), std::clamp(int(time * 10 + 1e-6), 0, 79) % 32) << time;
    }
    const QRgb ground = (*frames)->at(0)->pixel(200, 90);
    EXPECT_NEAR(qRed(ground), 40, 3);
    EXPECT_NEAR(qGreen(ground), 90, 3);
    EXPECT_NEAR(qBlue(ground), 160, 3);
    EXPECT_EQ(m_movies->frames(film, QSize(100, 100)).value()->at(1)->size(), QSize(100, 56));
}

TEST_F(FilmFiles, ExportsHoldThePartAloneAndAllSounds)
{
    const QString film = finished("d.mov", 60, {SoundSource::System, SoundSource::Microphone});
    WorkProgress progress;
    const QString mp4 = m_folder.filePath("d.mp4");
    ASSERT_TRUE(MovieExport::mp4(*m_movies, film, mp4, {2.05, 4.05}, progress));
    EXPECT_EQ(progress.done, 1.0);
    const FilmFacts facts(mp4);
    EXPECT_TRUE(facts.format("format_name").contains("mp4"));
    EXPECT_NEAR(facts.format("duration").toDouble(), 2.0, 0.03);
    ASSERT_EQ(facts.streams(), 2) << "players play one track of sound";
    EXPECT_EQ(facts.of(0, "nb_frames"), "21") << "the picture at the beginning, and one each 100 ms";
    EXPECT_EQ(facts.of(0, "start_time").toDouble(), 0.0);
    EXPECT_TRUE(facts.decodesWithoutErrors());
    const auto frames = m_movies->frames(mp4, {});
    ASSERT_TRUE(frames);
    EXPECT_EQ(barOf(*(*frames)->at(0)), 20);
    EXPECT_EQ(barOf(*(*frames)->at(0.06)), 21);
    EXPECT_EQ(barOf(*(*frames)->at(5)), 40 % 32);

    const QString gif = m_folder.filePath("d.gif");
    ASSERT_TRUE(GifExport::run(*m_movies, film, gif, {2, 4}, progress));
    const FilmFacts gifFacts(gif);
    EXPECT_EQ(gifFacts.countedFrames(), 24);
    EXPECT_NEAR(gifFacts.format("duration").toDouble(), 2.0, 0.001);
    const auto shown = m_movies->frames(gif, {});
    ASSERT_TRUE(shown);
    for (int i = 0; i < 24; ++i)
        EXPECT_EQ(barOf(*(*shown)->at(i / 12.0 + 0.02)), int(20 + i * 10 / 12.0 + 1e-6) % 32) << i;
}

TEST_F(FilmFiles, TakeOverTheirPicturesFromTheFirstThatStandsByItself)
{
    const QString film = finished("t.mov", 60, {SoundSource::System});
    const QStringList sums = FilmFacts(film).pictureSums();
    ASSERT_EQ(sums.size(), 60);
    WorkProgress progress;
    const QString whole = m_folder.filePath("whole.mp4");
    ASSERT_TRUE(MovieExport::mp4(*m_movies, film, whole, {}, progress));
    EXPECT_EQ(FilmFacts(whole).pictureSums(), sums);
    EXPECT_NEAR(FilmFacts(whole).format("duration").toDouble(), 6.0, 0.03);

    // Pictures that stand by themselves come each two seconds: those before the first are made anew.
    const QString part = m_folder.filePath("part.mp4");
    ASSERT_TRUE(MovieExport::mp4(*m_movies, film, part, {1.5, 5}, progress));
    const FilmFacts facts(part);
    EXPECT_TRUE(facts.decodesWithoutErrors());
    const QStringList kept = facts.pictureSums();
    ASSERT_EQ(kept.size(), 35);
    EXPECT_EQ(kept.mid(5), sums.mid(20, 30));
    const auto frames = m_movies->frames(part, {});
    ASSERT_TRUE(frames);
    for (int i = 0; i < 35; ++i)
        EXPECT_EQ(barOf(*(*frames)->at(i / 10.0 + 0.05)), (15 + i) % 32) << i;

    // And again, of a film that has parameter sets of two encoders.
    const QString again = m_folder.filePath("again.mp4");
    ASSERT_TRUE(MovieExport::mp4(*m_movies, part, again, {0.2, 3}, progress));
    EXPECT_TRUE(FilmFacts(again).decodesWithoutErrors());
    EXPECT_EQ(FilmFacts(again).pictureSums().mid(3), sums.mid(20, 25));
}

TEST_F(FilmFiles, CancelledExportsLeaveNothing)
{
    const QString film = finished("e.mov", 30);
    WorkProgress progress;
    progress.isCancelled = true;
    for (const char *name : {"e.mp4", "e.gif"}) {
        const QString target = m_folder.filePath(name);
        const auto made = QString(name).endsWith("gif")
                              ? GifExport::run(*m_movies, film, target, {}, progress)
                              : MovieExport::mp4(*m_movies, film, target, {}, progress);
        EXPECT_TRUE(!made && made.error().isCancelled()) << name;
    }
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"e.mov"});
}

TEST_F(FilmFiles, OfOtherKindsAreReadOrSayWhyNot)
{
    struct Case {
        const char *name;
        QStringList words; // for the program that makes it
        QSize size;
        double duration;
    };
    const QList<Case> cases{
        {"rotated.mp4", {"-display_rotation", "90"}, {180, 320}, 2},
        {"odd.mkv", {"-vf", "crop=319:179", "-pix_fmt", "yuv444p"}, {319, 179}, 2},
        {"ten-bits.mkv", {"-pix_fmt", "yuv420p10le"}, kSize, 2},
        {"hevc.mp4", {"-c:v", "libx265", "-x265-params", "log-level=none"}, kSize, 2},
        {"variable.mkv", {"-vf", "select=not(mod(n\\,7)),setpts=PTS", "-vsync", "vfr"}, kSize, 2},
        {"no-times.h264", {"-f", "h264"}, kSize, 2},
        {"pixels.avi", {"-vf", "setsar=2"}, {640, 180}, 2},
    };
    for (const Case &each : cases) {
        const QString path = m_folder.filePath(each.name);
        QStringList words{"-v", "error", "-f", "lavfi", "-i", "testsrc=size=320x180:rate=25:duration=2"};
        if (each.words.first() == "-display_rotation") {
            const QString plain = m_folder.filePath("plain.mp4");
            ASSERT_EQ(QProcess::execute("ffmpeg", words + QStringList{"-y", plain}), 0);
            words = QStringList{"-v", "error", "-i", plain, "-c", "copy", "-metadata:s:v", "rotate=90"};
        } else {
            words += each.words;
        }
        ASSERT_EQ(QProcess::execute("ffmpeg", words + QStringList{path}), 0) << each.name;
        const auto info = m_movies->info(path);
        ASSERT_TRUE(info) << each.name << qPrintable(info.error().message);
        EXPECT_EQ(info->size, each.size) << each.name;
        EXPECT_NEAR(info->duration, each.duration, 0.3) << each.name;
        auto frames = m_movies->frames(path, {});
        ASSERT_TRUE(frames) << each.name;
        const auto picture = (*frames)->at(1.5);
        ASSERT_TRUE(picture) << each.name;
        EXPECT_EQ(picture->size(), each.size) << each.name;
        WorkProgress progress;
        const QString mp4 = path + ".out.mp4";
        const auto made = MovieExport::mp4(*m_movies, path, mp4, {0.5, 1.5}, progress);
        ASSERT_TRUE(made) << each.name << qPrintable(made.error().message);
        EXPECT_NEAR(FilmFacts(mp4).format("duration").toDouble(), 1.0, 0.05) << each.name;
    }
}

TEST_F(FilmFiles, ThatAreNoneAreRefusedWithAReason)
{
    const QString film = finished("f.mov", 10);
    QFile whole(film);
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    const auto write = [&](const char *name, const QByteArray &content) {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    };
    const QString silent = m_folder.filePath("only-sound.wav");
    ASSERT_EQ(QProcess::execute("sox", {"-n", "-r", "16000", silent, "synth", "1", "sine", "440"}), 0);
    for (const QString &path :
         {m_folder.filePath("missing.mov"), write("empty.mov", {}), write("text.mov", "hello"),
          write("head.mov", bytes.left(200)), write("playlist.mov", "#EXTM3U\n" + film.toUtf8()), silent}) {
        const auto info = m_movies->info(path);
        ASSERT_FALSE(info) << qPrintable(path);
        EXPECT_TRUE(info.error().message.endsWith('.')) << qPrintable(info.error().message);
        EXPECT_FALSE(m_movies->frames(path, {}));
    }
}

TEST_F(FilmFiles, SpokenWordsComeBack)
{
    const QString voice = m_folder.filePath("voice.wav");
    ASSERT_EQ(QProcess::execute("flite", {"-voice", "rms", "-t",
                                          "the people of this city walk to the river in the morning. "
                                          "they look at the water and talk about the weather.",
                                          "-o", voice}),
              0);
    const QString film = m_folder.filePath("spoken.mov");
    // Two seconds of silence before, in the second of two tracks.
    ASSERT_EQ(QProcess::execute("ffmpeg", {"-v",
                                           "error",
                                           "-f",
                                           "lavfi",
                                           "-i",
                                           "color=size=64x64:rate=10:duration=10",
                                           "-f",
                                           "lavfi",
                                           "-i",
                                           "anullsrc=r=48000:cl=stereo:d=10",
                                           "-i",
                                           voice,
                                           "-filter_complex",
                                           "[2:a]adelay=2000:all=1,aresample=48000[s]",
                                           "-map",
                                           "0:v",
                                           "-map",
                                           "1:a",
                                           "-map",
                                           "[s]",
                                           "-t",
                                           "10",
                                           film}),
              0);
    const auto speech = makeSpeechEngine();
    WorkProgress progress;
    const auto cues = Captions::captions(*m_movies, *speech, film, progress);
    ASSERT_TRUE(cues) << qPrintable(cues.error().message);
    EXPECT_NEAR(cues->first().start, 2.0, 0.35);
    const QString said = Captions::transcript(*cues);
    int found = 0;
    const QStringList words{"people", "city", "walk", "river", "morning", "look", "water", "talk", "weather"};
    for (const QString &word : words)
        found += said.contains(word) ? 1 : 0;
    EXPECT_GE(found, 7) << qPrintable(said);
}
