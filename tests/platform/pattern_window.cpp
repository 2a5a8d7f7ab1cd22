#include "platform/pattern.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <cstdio>

// platform_pattern_window SEED X Y WIDTH HEIGHT [frameless] [glass] [shaped] [holder] [menu] [lock]
// Shows a window with pattern(SEED), says its id once it is painted, and stays until it is killed. "glass"
// makes it transparent but for its middle; "shaped" cuts its corners off; "holder" takes the keyboard
// for itself; "menu" opens a menu that doesn't say what it is and holds the keyboard; "lock" does so over all
// windows.
class PatternWindow : public QWidget {
public:
    PatternWindow(int seed, bool isGlass, bool isHolder)
        : m_seed(seed), m_isGlass(isGlass), m_isHolder(isHolder)
    {
        setAttribute(isGlass ? Qt::WA_TranslucentBackground : Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        const QRect part =
            m_isGlass ? rect().adjusted(width() / 4, height() / 4, -width() / 4, -height() / 4) : rect();
        painter.drawImage(part, pattern(size(), m_seed), part);
        if (!std::exchange(m_isTold, true)) {
            QMetaObject::invokeMethod(
                this,
                [this] {
                    if (m_isHolder)
                        grabKeyboard(); // only a window that can be seen may
                    std::printf("%u\n", unsigned(winId()));
                    std::fflush(stdout);
                },
                Qt::QueuedConnection);
        }
    }

private:
    int m_seed;
    bool m_isGlass;
    bool m_isHolder;
    bool m_isTold = false;
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList words = application.arguments();
    if (words.value(1) == "screens") {
        for (const QScreen *screen : QGuiApplication::screens()) {
            const QRect frame = screen->geometry();
            std::printf("%s %d %d %d %d %g\n", qPrintable(screen->name()), frame.x(), frame.y(),
                        frame.width(), frame.height(), screen->devicePixelRatio());
        }
        return 0;
    }
    if (words.size() < 6)
        return 2;
    PatternWindow window(words[1].toInt(), words.contains("glass"),
                         words.contains("holder") || words.contains("lock"));
    QWidget menu(nullptr, Qt::Window | Qt::BypassWindowManagerHint);
    Qt::WindowFlags flags = Qt::Window;
    if (words.contains("frameless"))
        flags |= Qt::FramelessWindowHint;
    if (words.contains("lock"))
        flags |= Qt::BypassWindowManagerHint;
    window.setWindowFlags(flags);
    window.setWindowTitle("Pattern " + words[1]);
    window.setGeometry(words[2].toInt(), words[3].toInt(), words[4].toInt(), words[5].toInt());
    if (words.contains("shaped"))
        window.setMask(QRegion(QRect(QPoint(), window.size()), QRegion::Ellipse));
    window.show();
    if (words.contains("menu")) {
        menu.setGeometry(QRect(window.pos() + QPoint(50, 50), QSize(120, 160)));
        menu.show();
        menu.grabKeyboard();
    }
    return application.exec();
}
