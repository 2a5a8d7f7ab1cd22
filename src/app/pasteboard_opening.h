#pragma once

#include "base/result.h"

#include <QImage>
#include <QString>
#include <functional>

class Pasteboard;

// Opens what is on the clipboard: the files that were copied, or else the picture.
class PasteboardOpening {
public:
    struct Actions {
        std::function<void(const QString &path)> openFile;
        std::function<void(const QImage &image)> openImage;
    };

    PasteboardOpening(const Pasteboard &pasteboard, Actions actions)
        : m_pasteboard(pasteboard), m_actions(std::move(actions))
    {}

    // Fails with a sentence for the user when there is neither.
    Result<void> open() const;

private:
    const Pasteboard &m_pasteboard;
    Actions m_actions;
};
