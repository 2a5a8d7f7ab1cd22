#include <QGuiApplication>
#include <QTemporaryDir>
#include <gmock/gmock.h>

// Without widgets and without a display: pictures, fonts and timers work, windows don't.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Thumbnails of tests don't stay among the user's.
    const QTemporaryDir cache;
    qputenv("XDG_CACHE_HOME", cache.path().toUtf8());
    testing::InitGoogleMock(&argc, argv);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
