#include <QApplication>
#include <gmock/gmock.h>

// On whatever display the runner chose: offscreen for ui tests, a private desktop for desktop tests.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
