#include <QGuiApplication>
#include <gmock/gmock.h>

// Without widgets and without a display: pictures, fonts and timers work, windows don't.
int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleMock(&argc, argv);
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
