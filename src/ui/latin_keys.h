#pragma once

#include <QObject>
#include <optional>

class QKeyEvent;

// Keys of layouts without Latin letters. The letter that a key has on a common Latin keyboard stands in for
// the one it has, where a letter alone is a command, and, for the whole program, where it comes with Ctrl or
// Super and nothing else took it.
class LatinKeys : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // Qt::Key_A to Qt::Key_Z; nothing for a key that has a Latin letter or is no letter.
    static std::optional<int> standIn(const QKeyEvent &event);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};
