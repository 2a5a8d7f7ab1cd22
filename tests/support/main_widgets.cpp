#include <QApplication>
#include <QTemporaryDir>
#include <gmock/gmock.h>

// On whatever display the runner chose: offscreen for ui tests, a private desktop for desktop tests.
int main(int argc, char **argv)
{
    // Thumbnails of tests don't stay among the user's.
    const QTemporaryDir cache;
    qputenv("XDG_CACHE_HOME", cache.path().toUtf8());
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
