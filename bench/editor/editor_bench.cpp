// What a user of the editor's window waits for, measured through a real window on the screen.
//
//     cmake --build build/release --target bench_editor
//     TD_SIZE=3840x2160 tests/desktop/test-desktop run build/release/bench/bench_editor

#include "mixed_objects.h"

#include "base/async.h"
#include "document/image_files.h"
#include "editor/canvas_view.h"
#include "editor/editor_stage.h"
#include "ui/appearance.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <QRandomGenerator>
#include <QScreen>
#include <QTest>
#include <algorithm>
#include <cstdio>

namespace {

QImage page(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(QColor(246, 247, 250));
    QPainter painter(&image);
    QFont font("Inter");
    font.setPixelSize(size.height() / 80);
    painter.setFont(font);
    painter.fillRect(0, 0, size.width() / 7, size.height(), QColor(32, 34, 46));
    for (int y = 40; y < size.height(); y += size.height() / 50)
        painter.drawText(size.width() / 6, y,
                         "The quick brown fox jumps over the lazy dog, account 4417 2290 1183");
    return image;
}

QList<Annotation> mixedObjects(int count, QSize size)
{
    // Spotlights and pasted pictures are measured on their own.
    QList<ToolKind> kinds = everyKind();
    kinds.removeAll(ToolKind::Spotlight);
    kinds.removeAll(ToolKind::Image);
    return mixedObjects(count, size, kinds);
}

// Tells when a widget has been painted and the paint has reached the screen.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget &widget) { widget.installEventFilter(this); }
    int paints = 0;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        // The flush comes right after the paint events, before anything queued.
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(this, [this] { ++paints; }, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }
};

struct Figures {
    QList<double> values; // milliseconds

    void print(const char *what) const
    {
        QList<double> sorted = values;
        std::sort(sorted.begin(), sorted.end());
        const auto at = [&](double share) {
            return sorted[qMin<qsizetype>(sorted.size() - 1, share * sorted.size())];
        };
        std::printf("%-58s median %7.1f  p95 %7.1f  max %7.1f ms  (n=%lld)\n", what, at(0.5), at(0.95),
                    sorted.last(), static_cast<long long>(sorted.size()));
        std::fflush(stdout);
    }
};

double milliseconds(const QElapsedTimer &timer)
{
    return timer.nsecsElapsed() / 1e6;
}

void openToFirstFrame(EditorStage &stage, const QString &path, const char *what)
{
    Figures figures;
    for (int i = 0; i < 8; ++i) {
        QElapsedTimer timer;
        timer.start();
        std::unique_ptr<EditorWindowController> editor;
        std::unique_ptr<PaintWatch> watch;
        whenDone(runInBackground([path, project = stage.library.projectDirectory(path)] {
                     return EditorDocument::load(path, project);
                 }),
                 &stage.board, [&](const EditorDocument::Source &source) {
                     editor = std::make_unique<EditorWindowController>(
                         std::make_unique<EditorDocument>(source), stage.ports());
                     watch = std::make_unique<PaintWatch>(editor->canvas());
                     editor->show();
                 });
        while (!watch || watch->paints == 0)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (i > 0) // the first one warms caches up
            figures.values.append(milliseconds(timer));
        editor->window().close();
        QTest::qWait(50);
    }
    figures.print(what);
}

class Hand {
public:
    explicit Hand(EditorWindowController &editor) : m_editor(editor), m_watch(editor.canvas()) {}

    // One frame for each point: from the event to the painted screen.
    Figures stroke(const QList<QPointF> &points)
    {
        Figures figures;
        send(QEvent::MouseButtonPress, points.first());
        settle();
        for (const QPointF &point : points.mid(1)) {
            const int before = m_watch.paints;
            QElapsedTimer timer;
            timer.start();
            send(QEvent::MouseMove, point);
            while (m_watch.paints == before)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            figures.values.append(milliseconds(timer));
        }
        send(QEvent::MouseButtonRelease, points.last());
        settle();
        return figures;
    }
    QPointF at(const QPointF &pixel) const
    {
        return m_editor.canvas().interaction().viewport().toView(pixel);
    }

private:
    void send(QEvent::Type type, const QPointF &position)
    {
        const bool isUp = type == QEvent::MouseButtonRelease;
        QMouseEvent event(type, position, m_editor.canvas().mapToGlobal(position),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          isUp ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&m_editor.canvas(), &event);
    }
    static void settle() { QTest::qWait(60); }

    EditorWindowController &m_editor;
    PaintWatch m_watch;
};

QList<QPointF> path(const QPointF &from, const QPointF &to, int steps)
{
    QList<QPointF> points;
    for (int i = 0; i <= steps; ++i)
        points.append(from + (to - from) * i / steps + QPointF(0, 30 * std::sin(i * 0.3)));
    return points;
}

void frames(EditorStage &stage, QSize size)
{
    auto editor = stage.open(page(size));
    editor->document().setAnnotations(mixedObjects(100, size));
    editor->show();
    editor->window().resize(QGuiApplication::primaryScreen()->availableSize() * 0.95);
    QTest::qWait(600);
    Hand hand(*editor);
    std::printf("canvas %d x %d, picture %d x %d, 100 objects\n", editor->canvas().width(),
                editor->canvas().height(), size.width(), size.height());
    const double s = size.width() / 3840.0;
    editor->document().setSelectedID({});
    editor->document().setTool(ToolKind::Rectangle);
    hand.stroke(path(hand.at({300 * s, 300 * s}), hand.at({2800 * s, 1700 * s}), 60))
        .print("  drawing a box");
    editor->document().undo();
    editor->document().setTool(ToolKind::Pen);
    hand.stroke(path(hand.at({300 * s, 300 * s}), hand.at({2800 * s, 1700 * s}), 120))
        .print("  drawing with the pen");
    editor->document().undo();
    editor->document().setTool(ToolKind::Spotlight);
    hand.stroke(path(hand.at({300 * s, 300 * s}), hand.at({2800 * s, 1700 * s}), 60))
        .print("  drawing a spotlight");
    editor->document().undo();
    editor->document().setTool(ToolKind::Select);
    // The lowest object of a kind that is not covered where it is gripped.
    const auto dragObject = [&](std::optional<ToolKind> kind, const char *what) {
        EditorDocument &document = editor->document();
        for (const Annotation &object : QList(document.annotations())) {
            const QPointF grip = object.bounds().center();
            const auto hit = document.hitTest(grip, 6);
            if (!hit || hit->id != object.id || (kind && object.kind != *kind))
                continue;
            document.setTool(ToolKind::Select);
            const QPointF from = hand.at(grip);
            hand.stroke(path(from, from + QPointF(400 * s, 250 * s), 80)).print(what);
            document.undo();
            return;
        }
        std::printf("%s: none is free\n", what);
    };
    dragObject({}, "  dragging the lowest object that is free");
    for (ToolKind kind :
         {ToolKind::Callout, ToolKind::Blur, ToolKind::Magnify, ToolKind::Pen, ToolKind::Highlight})
        dragObject(kind, qPrintable("  dragging: " + Tools::shortTitle(kind)));
    editor->window().close();
    QTest::qWait(100);
}

// Everything outside of the first spotlight darkens at once, objects and all.
void firstSpotlight(EditorStage &stage, QSize size)
{
    auto editor = stage.open(page(size));
    editor->document().setAnnotations(mixedObjects(100, size));
    editor->show();
    editor->window().resize(QGuiApplication::primaryScreen()->availableSize() * 0.95);
    QTest::qWait(600);
    Hand hand(*editor);
    Figures first, later;
    for (int i = 0; i < 12; ++i) {
        editor->document().setSelectedID({});
        editor->document().setTool(ToolKind::Spotlight);
        QTest::qWait(100);
        const Figures stroke = hand.stroke(path(hand.at({300, 300}), hand.at({1200, 900}), 20));
        first.values.append(stroke.values.first());
        later.values.append(stroke.values.mid(1));
        editor->document().undo();
        QTest::qWait(50);
    }
    first.print("  first frame of the first spotlight");
    later.print("  its later frames");
    editor->window().close();
    QTest::qWait(100);
}

double computed()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1e3 + time.tv_nsec / 1e6;
}

// The longest time in which nothing else could happen, from its making on; and how much of such a time this
// thread computed at most, which says more on a busy machine.
class Silence {
public:
    Silence()
    {
        QObject::connect(&m_heart, &QTimer::timeout, &m_heart, [this] {
            m_worst = qMax(m_worst, milliseconds(m_beat));
            m_worstComputed = qMax(m_worstComputed, computed() - m_computed);
            m_computed = computed();
            m_beat.start();
        });
        m_beat.start();
        m_heart.start(0);
    }
    double worst() const { return qMax(m_worst, milliseconds(m_beat)); }
    double worstComputed() const { return qMax(m_worstComputed, computed() - m_computed); }

private:
    QElapsedTimer m_beat;
    QTimer m_heart;
    double m_worst = 0;
    double m_computed = computed();
    double m_worstComputed = 0;
};

// What needs all pixels for the first time, or those of one object.
void firstBlurAndCopies(EditorStage &stage, QSize size)
{
    Figures blur, copy, blurComputed, copyComputed;
    for (int i = 0; i < 8; ++i) {
        auto editor = stage.open(page(size));
        EditorDocument &document = editor->document();
        document.setAnnotations(mixedObjects(20, size));
        editor->show();
        QTest::qWait(500);
        Hand hand(*editor);
        const Silence whileBlurring;
        document.setTool(ToolKind::Blur);
        hand.stroke(path(hand.at({300, 300}), hand.at({1200, 900}), 20));
        QTest::qWait(400);
        blur.values.append(whileBlurring.worst());
        blurComputed.values.append(whileBlurring.worstComputed());
        const Silence whileCopying;
        editor->sharing().copySelection();
        QTest::qWait(1500);
        copy.values.append(whileCopying.worst());
        copyComputed.values.append(whileCopying.worstComputed());
        editor->window().close();
    }
    blur.print("first blur of 4K, longest silence of the event loop");
    blurComputed.print("  computed in one go");
    copy.print("copying that object, longest silence of the event loop");
    copyComputed.print("  computed in one go");
}

void save(EditorStage &stage, const QString &path, QSize size)
{
    Figures total, stall;
    auto editor = stage.open(path);
    editor->document().setAnnotations(mixedObjects(20, size));
    editor->show();
    QTest::qWait(500);
    for (int i = 0; i < 8; ++i) {
        editor->document().setBase(page(size)); // as after a crop: nothing of the last save can serve again
        QTest::qWait(300);
        bool ended = false;
        const auto connection =
            QObject::connect(&editor->saving(), &DocumentSaving::ended, [&] { ended = true; });
        QElapsedTimer timer;
        timer.start();
        const Silence silence;
        editor->saving().save();
        while (!ended)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        total.values.append(milliseconds(timer));
        stall.values.append(silence.worst());
        QObject::disconnect(connection);
        QTest::qWait(100);
    }
    total.print("save of 4K with version and project, in all");
    stall.print("  longest silence of the event loop");
    editor->window().close();
    QTest::qWait(100);
}

double residentMegabytes()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * 4096 / 1e6;
}

void memory(EditorStage &stage, const QString &path, int objects)
{
    const double before = residentMegabytes();
    std::vector<std::unique_ptr<EditorWindowController>> editors;
    for (int i = 0; i < 20; ++i) {
        editors.push_back(stage.open(path));
        editors.back()->document().setAnnotations(mixedObjects(objects, {1920, 1080}));
        editors.back()->show();
        QTest::qWait(120);
    }
    QTest::qWait(500);
    std::printf("twenty editors of 1080p with %d objects each: %.0f MB resident, %.0f MB before\n", objects,
                residentMegabytes(), before);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    Appearance appearance(application);
    QApplication::setQuitOnLastWindowClosed(false);
    EditorStage stage;
    const QString hd = stage.inLibrary("hd.png"), uhd = stage.inLibrary("uhd.png");
    if (!ImageFiles::write(page({1920, 1080}), hd) || !ImageFiles::write(page({3840, 2160}), uhd))
        return 1;
    // In a process of its own: "bench_editor memory 0".
    if (application.arguments().value(1) == "memory") {
        memory(stage, hd, application.arguments().value(2).toInt());
        return 0;
    }
    if (application.arguments().value(1) == "spotlight") {
        firstSpotlight(stage, {3840, 2160});
        return 0;
    }
    if (application.arguments().value(1) == "blur") {
        firstBlurAndCopies(stage, {3840, 2160});
        return 0;
    }
    openToFirstFrame(stage, hd, "openEditor to the first painted frame, 1080p");
    openToFirstFrame(stage, uhd, "openEditor to the first painted frame, 4K");
    frames(stage, {3840, 2160});
    firstSpotlight(stage, {3840, 2160});
    firstBlurAndCopies(stage, {3840, 2160});
    save(stage, uhd, {3840, 2160});
    return 0;
}
