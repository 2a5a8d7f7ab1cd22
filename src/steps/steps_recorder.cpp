#include "steps/steps_recorder.h"

#include "base/async.h"
#include "base/log.h"
#include "base/notice.h"
#include "platform/accessible_elements.h"
#include "platform/permissions.h"
#include "platform/pointer_control.h"
#include "platform/screen_pictures.h"
#include "platform/sounds.h"
#include "platform/workspace.h"
#include "services/text_recognizer.h"
#include "steps/drawn_label.h"
#include "steps/step_captions.h"
#include "steps/steps_session.h"
#include "steps/texts.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

// In points: a sliver of a window tells less than the whole screen.
constexpr double kNarrowest = 80;
constexpr double kLowest = 60;
constexpr double kSmallestWindow = 40; // utility windows are smaller

// How long the end of a session waits for labels that are being read.
constexpr int kLabelPatience = 2000;

bool isPickable(const ListedWindow &window)
{
    return window.layer == 0 && window.pid != QCoreApplication::applicationPid() &&
           window.frame.width() > kSmallestWindow && window.frame.height() > kSmallestWindow;
}

// The window that a press belongs to. A menu may reach out of its program's window: then it is that window
// and the menu.
struct PressedWindow {
    QRectF frame;
    QString owner;
};
std::optional<PressedWindow> windowOf(const QList<ListedWindow> &windows, QPointF point, const Screen &screen,
                                      const ClickTarget &target)
{
    const auto isOfPopup = [&](const ListedWindow &window) {
        return target.isPopup && target.pid != 0 && window.pid == target.pid;
    };
    const ListedWindow *ofPopup = nullptr;
    const ListedWindow *under = nullptr;
    for (const ListedWindow &window : windows) {
        if (!isPickable(window))
            continue;
        if (!ofPopup && isOfPopup(window))
            ofPopup = &window;
        if (!under && holds(window.frame, point))
            under = &window;
    }
    if (ofPopup && (!under || under->pid != target.pid)) {
        const QRectF menu(screen.fromNative(target.window.topLeft()),
                          QSizeF(target.window.size()) / screen.scale);
        return PressedWindow{ofPopup->frame.united(menu), ofPopup->owner};
    }
    return under ? std::optional(PressedWindow{under->frame, under->owner}) : std::nullopt;
}

} // namespace

// One step on its way.
struct StepsRecorder::Capture {
    quint64 number = 0;
    Screen screen;
    GuideStep step;
    bool marksClick = false;
    QRect crop; // native pixels of the screen's picture
    bool hasPicture = false;
    bool hasElement = true;
    ClickTarget target;
    std::optional<AccessibleElement> element;
    bool isReady() const { return hasPicture && hasElement; }
};

StepsRecorder::StepsRecorder(Parts parts, QObject *parent)
    : QObject(parent),
      m_parts(std::move(parts)),
      m_lastCaptured(StepsTexts::tr("Click anywhere to capture a step"))
{
    connect(&m_parts.presses, &PressPictures::pressed, this, &StepsRecorder::clicked);
}

StepsRecorder::~StepsRecorder()
{
    if (isLive())
        stop();
}

Result<void> StepsRecorder::start(Finish finish)
{
    const bool maySee = m_parts.permissions.status(Permission::ScreenRecording) == PermissionStatus::Granted;
    const bool mayAsk = m_parts.permissions.status(Permission::Accessibility) == PermissionStatus::Granted;
    Log::info(QStringLiteral("Steps: screen recording=%1 accessibility=%2")
                  .arg(maySee ? QStringLiteral("true") : QStringLiteral("false"),
                       mayAsk ? QStringLiteral("true") : QStringLiteral("false")));
    const QList<Screen> screens = m_parts.screens.screens();
    if (!maySee || screens.isEmpty()) {
        const ScreenPictures::Capabilities able = m_parts.pictures.capabilities();
        return fail(
            Error::Kind::Unavailable,
            !able.displays && !able.reason.isEmpty()
                ? able.reason
                : StepsTexts::tr("No displays could be captured. Check Screen Recording permission."));
    }
    auto session = StepsSession::create(m_parts.folder);
    if (session)
        m_session = *session;
    else
        Log::error(QStringLiteral("Steps: pictures stay in memory"), session.error());
    m_finish = std::move(finish);

    const auto tip = [this] {
        m_parts.notices.post(
            StepsTexts::tr("Tip: allow Accessibility in Settings so steps say what you clicked"),
            QStringLiteral("accessibility"));
    };
    if (mayAsk) {
        m_parts.elements.prepare();
        whenDone(runInBackground([&elements = m_parts.elements] { return elements.isAvailable(); }), this,
                 [tip](bool isAvailable) {
                     if (!isAvailable)
                         tip();
                 });
    } else {
        tip();
    }
    m_state = State::Running;
    m_parts.presses.setWantsPictures(true);
    if (const auto watching = m_parts.presses.start(); !watching) {
        Log::error(QStringLiteral("Steps: the session refused the click monitor"), watching.error());
        m_parts.notices.post(watching.error().message, QStringLiteral("exclamationmark.triangle.fill"));
    }
    Log::info(QStringLiteral("Steps recording started (%1 display(s))").arg(screens.size()));
    Q_EMIT changed();
    return {};
}

void StepsRecorder::setPaused(bool paused)
{
    if (!isLive())
        return;
    m_state = paused ? State::Paused : State::Running;
    m_parts.presses.setWantsPictures(!paused);
    Q_EMIT changed();
}

void StepsRecorder::clicked(const Press &press)
{
    if (!isLive())
        return;
    Log::info(QStringLiteral("Steps: click at %1,%2%3")
                  .arg(int(press.point.x()))
                  .arg(int(press.point.y()))
                  .arg(isPaused() ? QStringLiteral(" (paused)") : QString()));
    if (isPaused())
        return;
    if (m_lastClick && press.time - *m_lastClick <= kDoubleClick)
        return;
    if (m_steps.size() + qsizetype(m_pending.size()) >= kMostSteps)
        return;
    m_lastClick = press.time;
    capture(press);
}

void StepsRecorder::capture(const Press &press)
{
    if (press.screen.native.isEmpty()) {
        Log::error(QStringLiteral("Steps: no display under the click"));
        return;
    }
    auto capture = std::make_unique<Capture>();
    capture->number = ++m_lastNumber;
    capture->marksClick = true;
    capture->hasElement = false;
    capture->target = press.target;
    frame(*capture, press.windows, press.screen, press.point, press.target);
    const quint64 number = capture->number;
    const QRect rect = capture->crop;
    m_pending.push_back(std::move(capture));
    whenDone(m_parts.elements.elementAt(press.target), this,
             [this, number](const std::optional<AccessibleElement> &element) {
                 if (Capture *waiting = pending(number)) {
                     waiting->element = element;
                     waiting->hasElement = true;
                     flush();
                 }
             });
    if (press.image)
        crop(number, *press.image, rect);
    else
        failCapture(number, press.image.error());
    Q_EMIT changed();
}

void StepsRecorder::addStep()
{
    if (!isLive())
        return;
    const QList<Screen> screens = m_parts.screens.screens();
    const QPointF point = m_parts.pointer.position();
    const Screen *screen = screenAt(screens, point);
    if (!screen) {
        Log::error(QStringLiteral("Steps: no display under the click"));
        return;
    }
    auto capture = std::make_unique<Capture>();
    capture->number = ++m_lastNumber;
    frame(*capture, m_parts.screens.windows(), *screen, point, {});
    capture->step.click.reset();
    const quint64 number = capture->number;
    const QRect rect = capture->crop;
    m_pending.push_back(std::move(capture));
    whenDone(m_parts.pictures.display(*screen, Pointer::Hidden), this,
             [this, number, rect](const Result<QImage> &image) {
                 if (image)
                     crop(number, *image, rect);
                 else
                     failCapture(number, image.error());
             });
    Q_EMIT changed();
}

// Chooses what the step shows: the window under the point, cut at the screen's edge, or the whole screen.
void StepsRecorder::frame(Capture &capture, const QList<ListedWindow> &windows, const Screen &screen,
                          std::optional<QPointF> click, const ClickTarget &target) const
{
    const auto window = windowOf(windows, *click, screen, target);
    if (window) {
        capture.step.app = window->owner;
    } else if (const auto front = m_parts.workspace.frontmost()) {
        capture.step.app = front->name;
    }
    if (capture.step.app && capture.step.app->isEmpty())
        capture.step.app.reset();
    const QRectF display = screen.frame();
    QRectF rect = window ? window->frame.intersected(display) : display;
    if (rect.width() < kNarrowest || rect.height() < kLowest)
        rect = display;
    const QRectF pixels((rect.topLeft() - display.topLeft()) * screen.scale, rect.size() * screen.scale);
    capture.screen = screen;
    capture.crop = pixels.toAlignedRect() & QRect(QPoint(), screen.native.size());
    capture.step.id = QUuid::createUuid();
    capture.step.click = (*click - rect.topLeft()) * screen.scale;
}

void StepsRecorder::crop(quint64 number, const QImage &image, const QRect &rect)
{
    whenDone(runInBackground([image, rect] {
                 const QRect inside = rect & image.rect();
                 return inside.isEmpty() ? image : image.copy(inside);
             }),
             this, [this, number](const QImage &picture) {
                 Capture *waiting = pending(number);
                 if (!waiting)
                     return;
                 if (picture.isNull())
                     return failCapture(number, {Error::Kind::Failed, {}, QStringLiteral("no memory")});
                 waiting->step.image = StepPicture(picture);
                 waiting->hasPicture = true;
                 flush();
             });
}

StepsRecorder::Capture *StepsRecorder::pending(quint64 number)
{
    for (const auto &capture : m_pending) {
        if (capture->number == number)
            return capture.get();
    }
    return nullptr;
}

void StepsRecorder::failCapture(quint64 number, const Error &error)
{
    if (!error.isCancelled())
        Log::error(QStringLiteral("Steps: couldn't capture a step"), error);
    std::erase_if(m_pending, [number](const auto &capture) { return capture->number == number; });
    m_lastCaptured = StepsTexts::tr("Couldn't capture — see Settings › Permissions & Help");
    Q_EMIT changed();
    flush();
}

// Steps come in the order of the presses, whichever is ready first.
void StepsRecorder::flush()
{
    while (!m_pending.empty() && m_pending.front()->isReady()) {
        const auto capture = std::move(m_pending.front());
        m_pending.pop_front();
        append(*capture);
    }
    finishIfReady();
}

void StepsRecorder::append(const Capture &capture)
{
    GuideStep step = capture.step;
    if (capture.marksClick) {
        const auto element =
            capture.element ? std::optional(capture.element->element) : std::optional<ClickedElement>();
        step.caption = StepCaptions::caption(element, step.app);
    }
    m_steps.append(step);
    m_lastCaptured = StepsTexts::tr("Step %1: %2")
                         .arg(m_steps.size())
                         .arg(step.caption.isEmpty() ? StepsTexts::tr("captured") : step.caption);
    m_parts.sounds.pop();
    Log::info(QStringLiteral("Steps: captured step %1 in %2")
                  .arg(m_steps.size())
                  .arg(step.app.value_or(QStringLiteral("unknown app"))));
    readLabel(capture);
    store();
    Q_EMIT changed();
}

// Where a program gives a control no name, its words may be drawn on it.
void StepsRecorder::readLabel(const Capture &capture)
{
    if (!capture.marksClick)
        return;
    const auto place =
        DrawnLabel::placeOf(capture.element, capture.target, capture.screen.scale, capture.crop.size());
    if (!place)
        return;
    const QRect rect = place->rect.translated(-capture.screen.native.topLeft() - capture.crop.topLeft());
    const QImage picture = capture.step.image.image();
    if (!picture.rect().contains(rect))
        return;
    ++m_labelsBeingRead;
    whenDone(m_parts.recognizer.lines(picture.copy(rect)), this,
             [this, id = capture.step.id, place = *place,
              app = capture.step.app](const Result<QList<RecognizedLine>> &lines) {
                 --m_labelsBeingRead;
                 ClickedElement element = place.element;
                 element.title = DrawnLabel::wordsOf(lines.value_or(QList<RecognizedLine>()), place);
                 if (!element.title->isEmpty())
                     labelRead(id, StepCaptions::caption(element, app));
                 finishIfReady();
             });
}

void StepsRecorder::labelRead(const QUuid &step, const QString &caption)
{
    for (GuideStep &each : m_steps) {
        if (each.id == step)
            each.caption = caption;
    }
    store();
    Q_EMIT changed();
}

void StepsRecorder::store()
{
    if (!m_session)
        return;
    Guide guide;
    guide.steps = m_steps;
    for (const GuideStep &step : m_steps)
        guide.originalClicks.insert(step.id, step.click);
    m_session->save(guide);
    // Nothing is lost while the program runs, but a full disk should be known.
    if (const auto failure = m_session->takeFailure(); failure && !std::exchange(m_hasToldFailure, true))
        m_parts.notices.post(failure->message, QStringLiteral("exclamationmark.triangle.fill"));
}

void StepsRecorder::done()
{
    if (!isLive())
        return;
    stop();
    m_state = State::Finishing;
    QTimer::singleShot(kLabelPatience, this, [this] {
        m_labelsBeingRead = 0;
        finishIfReady();
    });
    finishIfReady();
    Q_EMIT changed();
}

void StepsRecorder::finishIfReady()
{
    if (m_state != State::Finishing || !m_pending.empty() || m_labelsBeingRead > 0)
        return;
    Log::info(QStringLiteral("Steps recording finished with %1 step(s)").arg(m_steps.size()));
    if (m_steps.isEmpty() && m_session)
        std::exchange(m_session, nullptr)->discard();
    deliver(m_steps);
}

void StepsRecorder::cancel()
{
    if (!isLive() && m_state != State::Finishing)
        return;
    if (isLive())
        stop();
    m_pending.clear();
    m_steps.clear();
    if (m_session)
        m_session->discard();
    m_session.reset();
    deliver({});
}

void StepsRecorder::stop()
{
    m_parts.presses.stop();
    m_parts.elements.rest();
}

void StepsRecorder::deliver(const QList<GuideStep> &steps)
{
    m_state = State::Ended;
    Q_EMIT changed();
    if (const Finish finish = std::exchange(m_finish, {}))
        finish(steps);
}
