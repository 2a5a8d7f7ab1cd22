#include "ui/appearance.h"

#include "platform/desktop_appearance.h"
#include "ui/focus_ring.h"
#include "ui/theme.h"
#include "ui/theme_style.h"

#include <QApplication>

Appearance::Appearance(QApplication &application, DesktopAppearance *desktop)
    : m_application(application),
      m_desktop(desktop),
      m_style(new ThemeStyle),
      m_paletteIsDark(Theme::tokens(application.palette()).dark),
      m_dark(m_paletteIsDark)
{
    application.setStyle(m_style); // which takes it over
    application.setFont(Theme::font(Theme::Type::Body));
    m_ring = std::make_unique<FocusRing>(application);
    apply(m_dark);
    if (m_desktop)
        connect(m_desktop, &DesktopAppearance::changed, this, &Appearance::follow);
    follow();
}

Appearance::~Appearance() = default;

void Appearance::follow()
{
    bool dark = m_paletteIsDark;
    if (m_desktop) {
        dark = m_desktop->prefersDark().value_or(dark);
        m_style->setReducesMotion(m_desktop->reducesMotion());
    }
    const QByteArray override = qgetenv("LUMENPOST_THEME");
    if (override == "dark")
        dark = true;
    else if (override == "light")
        dark = false;
    if (dark != m_dark) {
        apply(dark);
        Q_EMIT changed();
    }
}

void Appearance::apply(bool dark)
{
    m_dark = dark;
    m_application.setPalette(Theme::palette(dark ? Theme::dark() : Theme::light()));
}
