#include "app/alerts.h"

#include "base/log.h"

#include <QPushButton>

QMessageBox *Alerts::make(const QString &message, const QString &information)
{
    if (m_open)
        m_open->close();
    auto *box = new QMessageBox(QMessageBox::Warning, QStringLiteral("Lumenpost"), message);
    box->setInformativeText(information);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowFlag(Qt::WindowStaysOnTopHint);
    m_open = box;
    Log::info(QStringLiteral("Dialog: ") + message);
    return box;
}

void Alerts::showCaptureError(const Error &error, const std::function<void()> &relaunch,
                              const std::function<void()> &openSettings)
{
    if (error.isCancelled())
        return;
    Log::error(QStringLiteral("Capture failed"), error);
    if (error.kind == Error::Kind::Denied) {
        QMessageBox *box = make(QStringLiteral("Lumenpost can't see your screen yet"), error.message);
        const auto *reopen = box->addButton(QStringLiteral("Quit && Reopen"), QMessageBox::AcceptRole);
        const auto *settings = box->addButton(QStringLiteral("Open Settings"), QMessageBox::ActionRole);
        box->addButton(QStringLiteral("Cancel"), QMessageBox::RejectRole);
        connect(reopen, &QPushButton::clicked, this, relaunch);
        connect(settings, &QPushButton::clicked, this, openSettings);
        box->open();
    } else {
        QMessageBox *box = make(QStringLiteral("Capture failed"), error.message);
        box->addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
        box->open();
    }
    bringForward();
}

bool Alerts::bringForward()
{
    if (!m_open)
        return false;
    m_open->show();
    m_open->raise();
    m_open->activateWindow();
    return true;
}
