#pragma once

#include "base/result.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <functional>

// The few messages that need a decision. One at a time; each is logged.
class Alerts : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // `heading` says what didn't come about. `relaunch` and `openSettings` serve a session that withholds the
    // picture of the screen.
    void showCaptureError(const QString &heading, const Error &error, const std::function<void()> &relaunch,
                          const std::function<void()> &openSettings);
    // One sentence of what could not be done.
    void showError(const Error &error);
    // Brings an open alert to the front; false when there is none.
    bool bringForward();

private:
    QMessageBox *make(const QString &message, const QString &information);

    QPointer<QMessageBox> m_open;
};
