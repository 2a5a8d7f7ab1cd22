#include "capture/page_picture.h"
#include "capture/scrolling_session.h"
#include "platform/permissions.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"

#include <QTest>
#include <gtest/gtest.h>
#include <numeric>

namespace {

// A desktop with one window that shows a page, and time that passes only while the session pauses.
class ScrollingWindow : public Screens, public ScreenPictures, public PointerControl, public Permissions {
public:
    explicit ScrollingWindow(Page page, int height) : page(std::move(page)), height(height) {}

    Page page;
    int height; // of the window, in points
    double scale = 1;
    QImage header;
    QImage footer;
    QSize onScreen{800, 2000};
    int pixelsPerClick = 50;
    double pixelsPerMillisecond = 1e9; // of the animation
    bool scrollsByWheel = true;
    bool isOpen = true;
    bool lightsUp = false;         // the row under the pointer
    int glowsUntil = 0;            // in milliseconds, the row that was under it, though it left
    std::function<void()> atPause; // what happens meanwhile
    std::function<void(int clicks)> atWheel;
    std::optional<Error> shotError; // of every shot after the first

    // What the session did.
    double offset = 0;
    double pending = 0; // still to be scrolled by the animation
    int shots = 0;
    int milliseconds = 0;
    QList<int> turns;
    QList<QPointF> warps;
    QList<Permission> requested;
    QPointF pointer{5, 5};

    ScrollingCaptureSession::Ports ports()
    {
        return {*this, *this, *this, *this, [this](int time) {
                    milliseconds += time;
                    const double step =
                        std::clamp(pending, -time * pixelsPerMillisecond, time * pixelsPerMillisecond);
                    pending -= step;
                    offset = std::clamp(offset + step, 0.0, double(page.image().height()) - height * scale);
                    if (atPause)
                        atPause();
                    return readyFuture(Result<void>{});
                }};
    }
    Screen screen() const
    {
        return {.id = 1, .name = {}, .native = {{200, 100}, onScreen}, .scale = scale, .isPrimary = true};
    }
    QRectF region() const { return {10, 20, Page::kWidth / scale, double(height)}; }

    QList<Screen> screens() const override { return {screen()}; }
    QList<ListedWindow> windows() const override
    {
        if (!isOpen)
            return {};
        ListedWindow window;
        window.id = 7;
        window.frame = region().translated(screen().frame().topLeft());
        return {window};
    }

    ScreenPictures::Capabilities capabilities() const override { return {}; }
    QFuture<Result<QImage>> display(const Screen &, Pointer) override
    {
        return readyFuture(Result<QImage>(fail("no")));
    }
    QFuture<Result<QImage>> window(quint32, Pointer, WindowPart) override
    {
        return readyFuture(Result<QImage>(fail("no")));
    }
    QFuture<Result<QImage>> region(const Screen &on, const QRectF &rect, Pointer shown) override
    {
        EXPECT_EQ(on, screen());
        EXPECT_EQ(rect, region());
        EXPECT_EQ(shown, Pointer::Hidden);
        if (shots++ > 0 && shotError)
            return readyFuture(Result<QImage>(std::unexpected(*shotError)));
        return readyFuture(Result<QImage>(picture()));
    }
    // Clicks of the last step; after it the wheel is turned back.
    int lastStep() const
    {
        return *std::find_if(turns.crbegin(), turns.crend(), [](int clicks) { return clicks > 0; });
    }
    QImage picture() const
    {
        QImage shown = page.frame(int(offset), int(height * scale), header, footer);
        const QPointF spot = milliseconds < glowsUntil
                                 ? QRectF(QPointF(), region().size()).center()
                                 : pointer - screen().frame().topLeft() - region().topLeft();
        if (lightsUp && QRectF(QPointF(), region().size()).contains(spot)) {
            const int row = (int(offset + spot.y()) / 36) * 36 - int(offset);
            QPainter(&shown).fillRect(0, row, Page::kWidth, 36, QColor(0, 0, 255, 60));
        }
        return shown;
    }

    QPointF position() const override { return pointer; }
    void warp(QPointF point) override
    {
        pointer = point;
        warps.append(point);
    }
    bool canScroll() const override { return scrollsByWheel; }
    QFuture<Result<void>> wheel(int clicks) override
    {
        turns.append(clicks);
        if (atWheel)
            atWheel(clicks);
        pending += clicks * pixelsPerClick;
        return readyFuture(Result<void>{});
    }

    PermissionStatus status(Permission) const override { return PermissionStatus::Granted; }
    void request(Permission permission) override { requested.append(permission); }
    void openSettings(Permission) override {}
};

class ScrollingSession : public testing::Test {
protected:
    std::optional<QImage> run(ScrollingWindow &window, int maxFrames = 80)
    {
        session = std::make_unique<ScrollingCaptureSession>(window.ports(), window.screen(), window.region());
        session->setMaxFrames(maxFrames);
        QObject::connect(session.get(), &ScrollingCaptureSession::shootingEnded, session.get(),
                         [this] { ++ends; });
        const QFuture<Result<std::optional<QImage>>> future = session->run();
        Result<std::optional<QImage>> result;
        QEventLoop loop;
        whenDone(future, &loop, [&](const Result<std::optional<QImage>> &outcome) {
            result = outcome;
            loop.quit();
        });
        loop.exec();
        EXPECT_EQ(ends, 1);
        if (!result) {
            error = result.error();
            return {};
        }
        return *result;
    }

    std::unique_ptr<ScrollingCaptureSession> session;
    std::optional<Error> error;
    int ends = 0;
};

QImage whole(const ScrollingWindow &window)
{
    QImage image = window.page.image();
    QPainter painter(&image);
    painter.drawImage(0, 0, window.header);
    painter.drawImage(0, image.height() - window.footer.height(), window.footer);
    return image;
}

} // namespace

TEST(WheelPlan, AsksForOneClickUntilItKnowsWhatAClickDoes)
{
    WheelPlan plan(400, 220);
    EXPECT_EQ(plan.clicks(), 1);
    EXPECT_FALSE(plan.expectedShift(1));
    plan.learn({.shift = 50}, 1);
    EXPECT_EQ(plan.clicks(), 4);
    EXPECT_EQ(plan.clicksAfter(50), 3);
    EXPECT_EQ(plan.expectedShift(4), 200);
    plan.learn({.shift = 20}, 4); // the page's end
    EXPECT_EQ(plan.clicks(), 4);
}

TEST(WheelPlan, KeepsAnOverlapBetweenATallHeaderAndFooter)
{
    WheelPlan plan(400, 220);
    plan.learn({.footer = 100, .shift = 20, .header = 100}, 1);
    EXPECT_EQ(plan.clicks(), 8); // 80% of the 200 rows that move
    plan.tooMany(8);
    EXPECT_EQ(plan.clicks(), 4);
    EXPECT_EQ(WheelPlan(60, 40).clicks(), 1);
}

TEST_F(ScrollingSession, GivesTheWholePageWithItsHeaderAndFooterOnce)
{
    ScrollingWindow window(Page(3000), 400);
    window.header = Page(40, 2).image();
    window.footer = Page(24, 3).image();
    EXPECT_TRUE(sameRows(run(window), whole(window)));
    EXPECT_EQ(session->message(), "Scrolling back…");
    EXPECT_EQ(session->reason(), ScrollingCaptureSession::Reason::End);
    EXPECT_LE(window.offset + window.pending, 0) << "the page was left where it was scrolled to";
    EXPECT_EQ(session->frames(), session->steps().size() + 1);
    // The middle of the region, in the desktop's points.
    EXPECT_EQ(window.warps.first(), QPointF(200 + 10 + 50, 100 + 20 + 200));
    EXPECT_TRUE(window.requested.isEmpty());
}

TEST_F(ScrollingSession, LearnsFromTheFirstClickHowFarOneGoes)
{
    for (const int pixels : {17, 46, 85, 120, 210}) {
        ScrollingWindow window(Page(3000), 400);
        window.pixelsPerClick = pixels;
        ends = 0;
        EXPECT_TRUE(sameRows(run(window), whole(window))) << pixels;
        EXPECT_EQ(window.turns.first(), 1);
        const int stepPixels = window.lastStep() * pixels;
        EXPECT_LE(std::abs(stepPixels - 220), std::max(pixels / 2, 0)) << pixels; // 55% of 400
        // The first click is the beginning of the first step, not a step of its own.
        EXPECT_GT(session->steps().first().shift, 220 - pixels) << pixels;
    }
}

TEST_F(ScrollingSession, ScrollsShortRegionsByAtLeastFortyPoints)
{
    // In the lowest the stitcher's twelve rows of overlap come first.
    for (const auto &[height, distance] : {std::pair{60, 40}, {75, 41}, {100, 55}, {50, 38}}) {
        ScrollingWindow window(Page(400), height);
        window.pixelsPerClick = 1;
        ends = 0;
        EXPECT_TRUE(sameRows(run(window), whole(window))) << height;
        EXPECT_EQ(window.lastStep(), distance) << height;
    }
    ScrollingWindow sharp(Page(900), 100);
    sharp.scale = 2;
    sharp.pixelsPerClick = 10;
    ends = 0;
    EXPECT_TRUE(sameRows(run(sharp), whole(sharp)));
    EXPECT_EQ(sharp.lastStep() * 10, 110);
}

TEST_F(ScrollingSession, KeepsThePointerOffRowsThatLightUpUnderIt)
{
    ScrollingWindow window(Page(3000), 400);
    window.lightsUp = true;
    EXPECT_TRUE(sameRows(run(window), whole(window)));
    EXPECT_LE(window.offset + window.pending, 0) << "scrolled back";

    ScrollingWindow slow(Page(3000), 400); // which at the end of the page is late to take the light away
    slow.lightsUp = true;
    slow.atWheel = [&](int) { slow.glowsUntil = slow.offset >= 2600 ? slow.milliseconds + 700 : 0; };
    ends = 0;
    EXPECT_TRUE(sameRows(run(slow), whole(slow)));

    ScrollingWindow filling(Page(3000), 400); // without room beside the region
    filling.lightsUp = true;
    filling.onScreen = (filling.region().size() + QSizeF(20, 40)).toSize();
    ends = 0;
    EXPECT_TRUE(run(filling));
    for (const QPointF &spot : filling.warps)
        EXPECT_TRUE(filling.screen().holds(spot)) << spot.x() << ", " << spot.y();
}

TEST_F(ScrollingSession, WaitsForAnAnimatedPageToStandStill)
{
    ScrollingWindow window(Page(3000), 400);
    window.pixelsPerClick = 120;
    window.pixelsPerMillisecond = 0.6; // 120 pixels take 200 ms, a step 400
    EXPECT_TRUE(sameRows(run(window), whole(window)));
    for (const FrameStitcher::Step &step : session->steps().first(session->steps().size() - 1))
        EXPECT_EQ(step.shift, 240);
}

TEST_F(ScrollingSession, ComesQuicklyThroughAPageThatMovesAtOnce)
{
    ScrollingWindow window(Page(8000), 400);
    run(window);
    EXPECT_LT(window.milliseconds, session->frames() * 220 + 3 * 500);
}

TEST_F(ScrollingSession, GoesBackWhenTheOverlapWasLost)
{
    // A page that suddenly scrolls four times as far.
    ScrollingWindow window(Page(3000), 400);
    window.atPause = [&] {
        if (window.offset > 800)
            window.pixelsPerClick = 200;
    };
    EXPECT_TRUE(sameRows(run(window), whole(window)));
    EXPECT_TRUE(
        std::any_of(window.turns.cbegin(), window.turns.cend(), [](int clicks) { return clicks < 0; }));
}

TEST_F(ScrollingSession, TellsThatItLostTheThreadAndWherePictureAndPageThenAre)
{
    // At some place the page scrolls further with one click than the region shows.
    ScrollingWindow window(Page(9000), 400);
    window.atPause = [&] {
        if (window.offset > 800)
            window.pixelsPerClick = 600;
    };
    const auto picture = run(window);
    ASSERT_TRUE(picture);
    EXPECT_TRUE(sameRows(picture, window.page.rows(0, picture->height())));
    EXPECT_EQ(session->reason(), ScrollingCaptureSession::Reason::LostThread);
    EXPECT_LE(window.offset + window.pending, 0);
}

TEST_F(ScrollingSession, LeavesThePageWhereItIsWhenTheUserNeedsThePointerOnTheWayBack)
{
    const auto backBy = [this](const std::function<void(ScrollingWindow &, int turn)> &meanwhile) {
        ScrollingWindow window(Page(9000), 400);
        window.atWheel = [&](int turn) { meanwhile(window, turn); };
        ends = 0;
        EXPECT_TRUE(sameRows(run(window), window.page.image()));
        return -std::accumulate(window.turns.cbegin(), window.turns.cend(), 0,
                                [](int sum, int turn) { return sum + std::min(turn, 0); });
    };
    EXPECT_GE(backBy([](ScrollingWindow &, int) {}), 172); // clicks down
    EXPECT_EQ(backBy([](ScrollingWindow &window, int turn) {
                  if (turn < 0)
                      window.pointer = {3, 3};
              }),
              10);
    EXPECT_EQ(backBy([this](ScrollingWindow &, int turn) {
                  if (turn < 0)
                      session->stop();
              }),
              10);
    EXPECT_EQ(backBy([](ScrollingWindow &window, int turn) { window.isOpen = window.isOpen && turn > 0; }),
              10);
}

TEST_F(ScrollingSession, WaitsAtTheLimitToBeToldToGoOn)
{
    ScrollingWindow window(Page(3000), 400);
    session = std::make_unique<ScrollingCaptureSession>(window.ports(), window.screen(), window.region());
    session->setMaxFrames(4);
    session->setAsksAtLimit();
    auto future = session->run();
    ASSERT_TRUE(QTest::qWaitFor([this] { return session->isAtLimit(); }));
    EXPECT_EQ(session->height(), 400 + 3 * 200);
    session->goOn();
    ASSERT_TRUE(QTest::qWaitFor([this] { return session->isAtLimit(); }));
    EXPECT_EQ(session->frames(), 8);
    session->stop();
    ASSERT_TRUE(QTest::qWaitFor([&] { return future.isFinished(); }));
    EXPECT_EQ(session->reason(), ScrollingCaptureSession::Reason::Limit);
    EXPECT_TRUE(sameRows(*future.result(), window.page.rows(0, 400 + 7 * 200)));
}

TEST_F(ScrollingSession, GivesNothingWhenCancelledAndScrollsBack)
{
    ScrollingWindow window(Page(3000), 400);
    window.atPause = [&] {
        if (window.offset > 800 && session->reason() == ScrollingCaptureSession::Reason::Running)
            session->cancel();
    };
    EXPECT_FALSE(run(window));
    EXPECT_FALSE(error);
    EXPECT_EQ(session->reason(), ScrollingCaptureSession::Reason::Cancelled);
    EXPECT_LE(window.offset + window.pending, 0);
}

TEST_F(ScrollingSession, WaitsForWhatLoadsLateAndSoonNoMoreForWhatStaysBlank)
{
    // Grey boxes that are filled 500 ms after they came into view, and then some that never are.
    const auto run = [this](bool areFilled) {
        Page loaded(3000);
        ScrollingWindow window(loaded, 400);
        QList<int> tops{450, 1000, 1600, 2300};
        QHash<int, int> seenAt;
        const auto fill = [&](int top, int bottom, const QImage &with) {
            QPainter(&window.page.editable()).drawImage(0, top, with, 0, top, Page::kWidth, bottom - top);
        };
        QImage grey = loaded.image();
        grey.fill(Qt::lightGray);
        for (const int top : tops)
            fill(top, top + 150, grey);
        const QImage blank = window.page.image();
        window.atPause = [&] {
            for (const int top : tops) {
                if (top < window.offset + 400 && !seenAt.contains(top))
                    seenAt[top] = window.milliseconds;
                if (areFilled && seenAt.contains(top) && window.milliseconds - seenAt[top] > 500)
                    fill(top, top + 150, loaded.image());
            }
        };
        ends = 0;
        EXPECT_TRUE(sameRows(ScrollingSession::run(window), areFilled ? loaded.image() : blank));
        return window.milliseconds;
    };
    run(true);
    EXPECT_LT(run(false), 13 * 220 + 3 * 500 + 2 * 900);
}

TEST_F(ScrollingSession, TakesWhatComesLateAtTheEnd)
{
    ScrollingWindow window(Page(1300), 400);
    const QImage page = window.page.image();
    window.page.blank(1150, 1220); // a picture that isn't there yet
    int restingAtTheEnd = 0;
    window.atPause = [&] {
        if (window.offset == 900 && ++restingAtTheEnd == 20)
            window.page = Page(1300);
    };
    EXPECT_TRUE(sameRows(run(window), page));
}

TEST_F(ScrollingSession, EndsAfterThreeUnchangedShotsOfAShortPage)
{
    ScrollingWindow window(Page(400), 400);
    EXPECT_EQ(run(window), window.page.image());
    EXPECT_EQ(session->frames(), 1);
    EXPECT_EQ(window.turns, (QList<int>{1, 1, 1}));
    EXPECT_EQ(session->reason(), ScrollingCaptureSession::Reason::NothingMoved);
}

TEST_F(ScrollingSession, EndsAtTheLimitOfFrames)
{
    ScrollingWindow window(Page(30000), 200);
    EXPECT_TRUE(run(window));
    EXPECT_EQ(session->frames(), 80);
    EXPECT_EQ(session->reason(), ScrollingCaptureSession::Reason::Limit);
    ends = 0;
    window.offset = 0;
    EXPECT_TRUE(run(window, 3));
    EXPECT_EQ(session->frames(), 3);
}

TEST_F(ScrollingSession, StopsAtOnceWithTheFirstShot)
{
    ScrollingWindow window(Page(3000), 400);
    window.atPause = [&] { session->stop(); };
    EXPECT_EQ(run(window), window.page.rows(0, 400));
    EXPECT_EQ(window.shots, 1);
    EXPECT_TRUE(window.turns.isEmpty());
}

TEST_F(ScrollingSession, KeepsShootingByHandUntilDone)
{
    ScrollingWindow window(Page(3000), 400);
    window.scrollsByWheel = false;
    window.pixelsPerMillisecond = 0.5;
    int pauses = 0;
    window.atPause = [&] {
        ++pauses;
        EXPECT_EQ(session->message(), "Scroll the area slowly");
        if (pauses == 10) // after ten shots of a page that stands still
            window.pending = 700;
        if (pauses == 20)
            session->stop();
    };
    EXPECT_TRUE(sameRows(run(window), window.page.rows(0, 400 + 700)));
    EXPECT_EQ(window.shots, 20);
    EXPECT_EQ(window.milliseconds, 20 * 300);
    EXPECT_TRUE(window.turns.isEmpty());
    EXPECT_TRUE(window.warps.isEmpty());
    EXPECT_EQ(window.requested, QList<Permission>{Permission::Accessibility});
}

TEST_F(ScrollingSession, LetsTheHandReachTheDoneButton)
{
    ScrollingWindow window(Page(30000), 400);
    int pauses = 0;
    qsizetype turnsThen = 0;
    window.atPause = [&] {
        ++pauses;
        if (pauses == 40) {
            window.pointer = {300, 900}; // on the way to the panel
            turnsThen = window.turns.size();
        }
        if (pauses > 40 && pauses < 43)
            window.pointer += QPointF(0, 20);
        if (pauses == 43)
            session->setHeld(true);
        if (pauses == 100)
            session->stop();
    };
    EXPECT_TRUE(run(window));
    const auto downwards = std::ranges::count_if(window.turns, [](int clicks) { return clicks > 0; });
    EXPECT_LE(downwards, turnsThen + 1);
    EXPECT_EQ(window.pointer, QPointF(300, 940));
}

TEST_F(ScrollingSession, GoesOnWhenTheHandRestsElsewhere)
{
    ScrollingWindow window(Page(3000), 400);
    int pauses = 0;
    window.atPause = [&] {
        if (++pauses == 10)
            window.pointer = {300, 900};
    };
    EXPECT_TRUE(sameRows(run(window), whole(window)));
}

TEST_F(ScrollingSession, GivesWhatItHasWhenTheWindowIsClosed)
{
    ScrollingWindow window(Page(3000), 400);
    qsizetype turnsThen = 0;
    window.atPause = [&] {
        if (window.offset > 1000 && window.isOpen) {
            window.isOpen = false;
            turnsThen = window.turns.size();
        }
    };
    const auto picture = run(window);
    ASSERT_TRUE(picture);
    EXPECT_TRUE(sameRows(picture, window.page.rows(0, picture->height())));
    EXPECT_GT(picture->height(), 1000);
    EXPECT_EQ(window.turns.size(), turnsThen) << "turned the wheel over something else";
}

TEST_F(ScrollingSession, PassesTheErrorOfAShotOn)
{
    ScrollingWindow window(Page(3000), 400);
    window.shotError = Error{Error::Kind::NotFound, "That screen is gone.", {}};
    EXPECT_FALSE(run(window));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->message, "That screen is gone.");
}

TEST_F(ScrollingSession, IsCancelledByItsOwnersDeath)
{
    ScrollingWindow window(Page(3000), 400);
    session = std::make_unique<ScrollingCaptureSession>(window.ports(), window.screen(), window.region());
    auto future = session->run();
    session.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return future.isFinished(); }, 2000));
    EXPECT_EQ(future.resultCount(), 0);
}
