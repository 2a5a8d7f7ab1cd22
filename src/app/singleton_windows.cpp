#include "app/singleton_windows.h"

#include "settings/defaults.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QJsonValue>
#include <QScreen>

namespace {

constexpr int kTitleBar = 36; // points; the tallest of those tried

struct Traits {
    QSize size; // points
    bool isResizable;
    const char *frameKey; // of the stored place; null for a window that is always centred
};

Traits traitsOf(SingletonWindows::Kind kind)
{
    switch (kind) {
    case SingletonWindows::Kind::Library:
        return {{1180, 740}, true, "windowFrame LumenpostLibrary"};
    case SingletonWindows::Kind::Settings:
        return {{620, 540}, false, nullptr};
    case SingletonWindows::Kind::Welcome:
        return {{560, 480}, false, nullptr};
    }
    Q_UNREACHABLE();
}

} // namespace

void bringToFront(QWidget *window)
{
    if (!window)
        return;
    const auto front = [window] {
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->show();
        window->raise();
        window->activateWindow();
    };
    front();
    QMetaObject::invokeMethod(window, front, Qt::QueuedConnection);
}

void placeInTheMiddle(QWidget *window)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect room = screen->availableGeometry();
    // What window managers put around a window is known only when it is shown.
    const QSize frame(0, kTitleBar);
    if (window->minimumSize() != window->maximumSize())
        window->resize(window->size().boundedTo(room.size() - frame));
    QRect place(QPoint(), window->size() + frame);
    place.moveCenter(room.center());
    window->move(place.topLeft());
}

SingletonWindows::SingletonWindows(Defaults &defaults, QObject *parent) : QObject(parent), m_defaults(defaults) {}

SingletonWindows::~SingletonWindows()
{
    for (const QPointer<QWidget> &window : std::as_const(m_open)) {
        window->removeEventFilter(this);
        delete window.data();
    }
}

void SingletonWindows::provide(Kind kind, Make make)
{
    m_makers.insert(kind, std::move(make));
}

QWidget *SingletonWindows::show(Kind kind)
{
    if (!canShow(kind))
        return nullptr;
    QWidget *window = m_open.value(kind);
    if (!window) {
        window = m_makers.value(kind)().release();
        window->installEventFilter(this);
        m_open.insert(kind, window);
        place(kind, *window);
        Q_EMIT changed();
    }
    bringToFront(window);
    return window;
}

void SingletonWindows::place(Kind kind, QWidget &window) const
{
    const Traits traits = traitsOf(kind);
    if (traits.isResizable)
        window.resize(traits.size);
    else
        window.setFixedSize(traits.size);
    const QByteArray stored =
        traits.frameKey ? QByteArray::fromBase64(m_defaults.value(traits.frameKey).toString().toLatin1())
                        : QByteArray();
    if (!stored.isEmpty() && window.restoreGeometry(stored))
        return;
    placeInTheMiddle(&window);
}

void SingletonWindows::storePlace(Kind kind, const QWidget &window) const
{
    if (const char *key = traitsOf(kind).frameKey)
        m_defaults.set(key, QString::fromLatin1(window.saveGeometry().toBase64()));
}

bool SingletonWindows::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Close) {
        // After the window itself had its say, which may be to stay.
        event->accept();
        auto *window = static_cast<QWidget *>(watched);
        QMetaObject::invokeMethod(
            this,
            [this, kept = QPointer(window)] {
                if (!kept || kept->isVisible())
                    return;
                const Kind kind = m_open.key(kept);
                storePlace(kind, *kept);
                m_open.remove(kind);
                kept->deleteLater();
                Q_EMIT changed();
            },
            Qt::QueuedConnection);
    }
    return false;
}
