#pragma once

#include "base/async.h"
#include "platform/desktop_parts.h"
#include "platform/shortcut_holders.h"

#include <QHash>

// A desktop of the test's making: a few parts work, and one is missing.
class FakeDesktopParts : public DesktopParts {
public:
    QFuture<QList<DesktopPart>> look() const override { return readyFuture(parts); }

    using Kind = DesktopPart::Kind;
    using State = DesktopPart::State;
    QList<DesktopPart> parts{
        {Kind::AccessibilityBus, State::Works, QStringLiteral("at-spi2-core")},
        {Kind::SoundServer, State::Works, QStringLiteral("pipewire-pulse")},
        {Kind::Camera, State::Barred},
        {Kind::RecognitionData, State::Works, QStringLiteral("tesseract-ocr-eng"), QStringLiteral("eng")},
        {Kind::SpeechModel, State::Missing, QStringLiteral("pocketsphinx-en-us")},
        {Kind::Portals, State::Works, QStringLiteral("xdg-desktop-portal")},
        {Kind::SecretService, State::Works, QStringLiteral("gnome-keyring")},
    };
};

// Programs that hold the shortcuts that a test gives them, by key and modifiers.
class FakeShortcutHolders : public ShortcutHolders {
public:
    QFuture<QString> holder(const QString &key, Qt::KeyboardModifiers modifiers) const override
    {
        return readyFuture(holders.value({key, int(modifiers)}));
    }
    QString howToFree() const override { return QStringLiteral("Free it in the settings of the desktop."); }

    QHash<std::pair<QString, int>, QString> holders;
};
