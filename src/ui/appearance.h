#pragma once

#include <QObject>
#include <memory>

class DesktopAppearance;
class FocusRing;
class LatinKeys;
class QApplication;
class ThemeStyle;

// Gives the application its style, font and colours, and follows the desktop's wish for light or dark.
//
// LUMENPOST_THEME=light|dark|light-contrast|dark-contrast overrides the desktop. Without either, the palette that the platform gave
// decides.
class Appearance : public QObject {
    Q_OBJECT
public:
    // `desktop` may be null.
    explicit Appearance(QApplication &application, DesktopAppearance *desktop = nullptr);
    ~Appearance() override;

Q_SIGNALS:
    void changed();

private:
    void follow();
    void apply(bool dark, bool highContrast);

    QApplication &m_application;
    DesktopAppearance *m_desktop;
    ThemeStyle *m_style;
    std::unique_ptr<FocusRing> m_ring;
    std::unique_ptr<LatinKeys> m_latinKeys;
    bool m_paletteIsDark;
    bool m_dark;
    bool m_highContrast = false;
};
