#include "app/source_application.h"

#include "platform/workspace.h"

#include <QCoreApplication>

SourceApplication::SourceApplication(Workspace &workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_lastOther(frontmost())
{
    connect(&workspace, &Workspace::activated, this, [this](const Workspace::Application &application) {
        if (application.pid != QCoreApplication::applicationPid())
            m_lastOther = application.name;
    });
}

std::optional<QString> SourceApplication::frontmost() const
{
    const auto application = m_workspace.frontmost();
    if (!application || application->pid == QCoreApplication::applicationPid())
        return std::nullopt;
    return application->name;
}

std::optional<QString> SourceApplication::name() const
{
    const auto front = frontmost();
    return front ? front : m_lastOther;
}
