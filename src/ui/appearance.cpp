#include "ui/appearance.h"

#include "platform/desktop_appearance.h"
#include "ui/focus_ring.h"
#include "ui/latin_keys.h"
#include "ui/roles.h"
#include "ui/theme.h"
#include "ui/theme_style.h"

#include <QApplication>
#include <QThread>
#include <QThreadPool>

namespace {

// The toolkit paints larger areas on the threads of its pool and waits for them, and work in the background
// runs there, too: two long works held up all painting of a machine with two cores for three seconds.
void leaveThreadsForPainting()
{
    constexpr int kMoreThanWorkAtOnce = 6;
    QThreadPool::globalInstance()->setMaxThreadCount(QThread::idealThreadCount() + kMoreThanWorkAtOnce);
}

} // namespace

Appearance::Appearance(QApplication &application, DesktopAppearance *desktop)
    : m_application(application),
      m_desktop(desktop),
      m_style(new ThemeStyle),
      m_paletteIsDark(Theme::tokens(application.palette()).dark),
      m_dark(m_paletteIsDark)
{
    leaveThreadsForPainting();
    application.setStyle(m_style); // which takes it over
    application.setFont(Theme::font(Theme::Type::Body));
    Roles::install();
    m_latinKeys = std::make_unique<LatinKeys>();
    application.installEventFilter(m_latinKeys.get());
    m_ring = std::make_unique<FocusRing>(application);
    apply(m_dark, m_highContrast);
    if (m_desktop)
        connect(m_desktop, &DesktopAppearance::changed, this, &Appearance::follow);
    follow();
}

Appearance::~Appearance() = default;

void Appearance::follow()
{
    bool dark = m_paletteIsDark, highContrast = false;
    if (m_desktop) {
        dark = m_desktop->prefersDark().value_or(dark);
        highContrast = m_desktop->wantsContrast();
        m_style->setReducesMotion(m_desktop->reducesMotion());
    }
    const QByteArray override = qgetenv("LUMENPOST_THEME");
    if (override.startsWith("dark") || override.startsWith("light")) {
        dark = override.startsWith("dark");
        highContrast = override.endsWith("-contrast");
    }
    if (dark != m_dark || highContrast != m_highContrast) {
        apply(dark, highContrast);
        Q_EMIT changed();
    }
}

void Appearance::apply(bool dark, bool highContrast)
{
    m_dark = dark;
    m_highContrast = highContrast;
    const Theme::Tokens &plain = dark ? Theme::dark() : Theme::light();
    const Theme::Tokens &strong = dark ? Theme::highContrastDark() : Theme::highContrastLight();
    m_application.setPalette(Theme::palette(highContrast ? strong : plain));
}
