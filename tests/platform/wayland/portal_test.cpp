#include "base/async.h"
#include "platform/wayland/cast_film.h"
#include "platform/wayland/cast_origin.h"
#include "platform/wayland/fake_portal.h"
#include "platform/wayland/portal_pictures.h"
#include "support/temporary_folder.h"

#include <QFile>
#include <QTest>
#include <atomic>

namespace {

// Streams that never show anything, and end for no reason of their own.
class StillCasts : public ScreenCasts {
public:
    Result<std::unique_ptr<ScreenCast>> open(const CastSource &source, int, CastReceiver) override
    {
        node = source.node;
        return std::make_unique<ScreenCast>();
    }
    quint32 node = 0;
};

class PortalTest : public testing::Test {
protected:
    using Origin = Result<std::unique_ptr<CastOrigin>>;
    using Mood = FakePortal::Mood;

    // While the portal answers here, somebody waits for it there.
    template <typename Work>
    static auto asked(Work work)
    {
        auto future = runInBackground(work);
        EXPECT_TRUE(QTest::qWaitFor([&] { return future.isFinished(); }, 20000));
        return future.takeResult();
    }
    Origin cast(const Screen &screen, std::chrono::milliseconds patience = std::chrono::seconds(20))
    {
        return asked([&] { return CastOrigins::fromPortal(screen, Pointer::Hidden, home.path(), patience); });
    }
    static Screen screenAt(const QString &name, const QPoint &place)
    {
        Screen screen;
        screen.id = 1;
        screen.name = name;
        screen.native = QRect(place, QSize(1280, 720));
        return screen;
    }
    QStringList grants() const { return QDir(home.path()).entryList({"film-grant-*"}, QDir::Files); }

    TemporaryFolder home;
    const Screen left = screenAt("Left", QPoint(0, 0));
};

} // namespace

TEST_F(PortalTest, AsksOncePerScreenAndShowsTheGrantTheNextTime)
{
    FakePortal portal;
    ASSERT_TRUE(cast(left).has_value());
    ASSERT_EQ(grants().size(), 1);
    EXPECT_EQ(QFile::permissions(home.path(grants().first())) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
    ASSERT_TRUE(cast(left).has_value());
    ASSERT_TRUE(cast(left).has_value());
    portal.place = QPoint(1280, 0);
    ASSERT_TRUE(cast(screenAt("Right", QPoint(1280, 0))).has_value());
    EXPECT_EQ(portal.tokens, (QStringList{"", "grant 1", "grant 2", ""}));

    // Who picks another screen is told which one is meant, and asked again.
    const Origin wrong = cast(left);
    ASSERT_FALSE(wrong.has_value());
    EXPECT_EQ(wrong.error().kind, Error::Kind::Denied);
    EXPECT_TRUE(wrong.error().message.contains("Left"));
    portal.place = {};
    ASSERT_TRUE(cast(left).has_value());
    EXPECT_EQ(portal.tokens.last(), "");
}

TEST_F(PortalTest, EndsInOneSentenceWhateverThePortalDoes)
{
    using namespace std::chrono_literals;
    const Origin none = cast(left);
    ASSERT_FALSE(none.has_value());
    EXPECT_EQ(none.error().kind, Error::Kind::Unavailable);
    QStringList sentences;
    for (const auto [mood, kind] :
         {std::pair(Mood::No, Error::Kind::Denied), std::pair(Mood::Never, Error::Kind::Failed),
          std::pair(Mood::Dies, Error::Kind::Failed)}) {
        FakePortal portal;
        portal.mood = mood;
        const Origin origin = cast(left, mood == Mood::Never ? 200ms : 20000ms);
        ASSERT_FALSE(origin.has_value()) << int(mood);
        EXPECT_EQ(origin.error().kind, kind) << int(mood);
        EXPECT_EQ(portal.closed, mood == Mood::Never ? 1 : 0) << "the question is taken back";
        const auto picture =
            asked([&] { return PortalPictures::desktop(mood == Mood::Never ? 200ms : 20000ms); });
        ASSERT_FALSE(picture.has_value()) << int(mood);
        sentences.append(origin.error().message);
        if (mood != Mood::Dies) // it is gone by then
            EXPECT_EQ(picture.error().message, origin.error().message);
    }
    EXPECT_EQ(sentences.removeDuplicates(), 0);
    EXPECT_TRUE(grants().isEmpty());

    FakePortal portal;
    portal.mood = Mood::Late;
    EXPECT_TRUE(cast(left).has_value());
}

TEST_F(PortalTest, TakesAPictureAwayWithItAndRefusesOneThatIsBlack)
{
    FakePortal portal;
    portal.picture = home.path("shot.png");
    QImage drawn(40, 30, QImage::Format_RGB32);
    for (const QRgb colour : {qRgb(10, 200, 30), qRgb(0, 0, 0)}) {
        drawn.fill(colour);
        ASSERT_TRUE(drawn.save(portal.picture));
        const auto picture = asked([] { return PortalPictures::desktop(); });
        EXPECT_EQ(picture.has_value(), colour != qRgb(0, 0, 0));
        if (picture)
            EXPECT_EQ(*picture, drawn);
        EXPECT_FALSE(QFile::exists(portal.picture)) << "it piles up otherwise";
    }
    EXPECT_FALSE(asked([] { return PortalPictures::desktop(); }).has_value()) << "there is no such file";
}

TEST_F(PortalTest, EndsTheFilmWhenTheDesktopTakesTheGrantBack)
{
    FakePortal portal;
    Origin origin = cast(left);
    ASSERT_TRUE(origin.has_value());
    StillCasts casts;
    std::atomic<int> ends = 0;
    QString why;
    const auto film = startCastFilm(casts, std::move(*origin), left, {left.native, Pointer::Hidden, {}, 30},
                                    {[](const FilmFrame &) {},
                                     [&](const Error &error) {
                                         why = error.message;
                                         ++ends;
                                     }});
    ASSERT_TRUE(film.has_value());
    EXPECT_EQ(casts.node, 7U);
    portal.withdraw();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ends == 1; }, 20000));
    EXPECT_FALSE(why.isEmpty());
    EXPECT_FALSE(grants().isEmpty()) << "it may be granted again";
}
