#pragma once

#include "platform/desktop_appearance.h"

#include <QSet>
#include <QVariant>

// Reads the user's wishes from the desktop portal's settings and follows their changes. Begins at the first
// question, whose answer comes later; a desktop without the portal never says anything.
class PortalAppearance : public DesktopAppearance {
    Q_OBJECT
public:
    using DesktopAppearance::DesktopAppearance;

    std::optional<bool> prefersDark() override;
    bool reducesMotion() override;
    bool wantsContrast() override;

private:
    void begin();
    void ask(const QString &group, const QString &key);
    void take(const QString &group, const QString &key, QVariant value);

    bool m_hasBegun = false;
    std::optional<bool> m_prefersDark;
    // By what each desktop calls it; any of them counts.
    QSet<QString> m_reducingMotion;
    QSet<QString> m_wantingContrast;
};
