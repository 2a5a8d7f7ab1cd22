#include "app/alerts.h"

#include "app/texts.h"
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

void Alerts::showCaptureError(const QString &heading, const Error &error,
                              const std::function<void()> &relaunch,
                              const std::function<void()> &openSettings)
{
    if (error.isCancelled())
        return;
    Log::error(QStringLiteral("Capture failed"), error);
    if (error.kind == Error::Kind::Denied) {
        QMessageBox *box = make(AppTexts::tr("Lumenpost can't see your screen yet"), error.message);
        const auto *reopen = box->addButton(AppTexts::tr("Quit && Reopen"), QMessageBox::AcceptRole);
        const auto *settings = box->addButton(AppTexts::tr("Open Settings"), QMessageBox::ActionRole);
        box->addButton(AppTexts::tr("Cancel"), QMessageBox::RejectRole);
        connect(reopen, &QPushButton::clicked, this, relaunch);
        connect(settings, &QPushButton::clicked, this, openSettings);
        box->open();
    } else {
        QMessageBox *box = make(heading, error.message);
        box->addButton(AppTexts::tr("OK"), QMessageBox::AcceptRole);
        box->open();
    }
    bringForward();
}

void Alerts::showError(const Error &error)
{
    QMessageBox *box = make(error.message, {});
    box->addButton(AppTexts::tr("OK"), QMessageBox::AcceptRole);
    box->open();
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
