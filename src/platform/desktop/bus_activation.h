#pragma once

#include "platform/desktop_activation.h"

#include <QObject>
#include <QVariantList>
#include <QVariantMap>

// Activation over the session bus, as the Desktop Entry Specification ("D-Bus Activation") has it: a desktop
// starts the program by its name on the bus, or asks the one that runs.
class BusActivation : public QObject, public DesktopActivation {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    ~BusActivation() override;
    void serve(Handlers handlers) override;

public Q_SLOTS:
    // The bus gives these names.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &addresses, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &action, const QVariantList &parameters,
                                     const QVariantMap &platformData);

private:
    Handlers m_handlers;
};
