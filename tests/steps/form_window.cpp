// A form of another program, at 200, 150: a labelled field with something typed, a button, a check box, a
// menu.
#include <QApplication>
#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPushButton>
#include <QTimer>
#include <QWindow>
#include <cstdio>

int main(int count, char **words)
{
    QApplication application(count, words);
    QMainWindow window;
    window.setWindowTitle("Order form");
    window.menuBar()->addMenu("Account")->addAction("Sign out");
    QWidget form;
    QFormLayout layout(&form);
    QLineEdit name("typed-secret-41");
    QPushButton send("Send order");
    QCheckBox terms("Accept terms");
    layout.addRow("Full name", &name);
    layout.addRow(&terms);
    layout.addRow(&send);
    window.setCentralWidget(&form);
    window.resize(500, 300);
    // The press changes the window in the next frame, as programs do that draw with their display.
    QObject::connect(&send, &QPushButton::pressed, &window,
                     [&] { QTimer::singleShot(16, &form, [&] { form.setStyleSheet("background: red"); }); });
    window.move(200, 150);
    window.show();
    QObject::connect(&application, &QApplication::focusWindowChanged, &window, [&] {
        for (QWidget *widget : {static_cast<QWidget *>(&name), static_cast<QWidget *>(&send),
                                static_cast<QWidget *>(&terms), static_cast<QWidget *>(window.menuBar())}) {
            const bool isBar = widget == window.menuBar();
            const QPoint at = widget->mapToGlobal(isBar ? QPoint(25, widget->height() / 2)
                                                        : QPoint(12, widget->height() / 2));
            std::printf("%d %d ", at.x(), at.y());
        }
        std::printf("\n");
        std::fflush(stdout);
    });
    return application.exec();
}
