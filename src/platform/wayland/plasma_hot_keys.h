#pragma once

#include "platform/hot_keys.h"

#include <QList>
#include <memory>

class QDBusServiceWatcher;

// Shortcuts of a Plasma session, which its own settings list too. They are given back when this is destroyed,
// and set again when the desktop's keeper of shortcuts starts anew.
class PlasmaHotKeys : public HotKeys {
    Q_OBJECT
public:
    PlasmaHotKeys();
    ~PlasmaHotKeys() override;
    Result<void> registerKey(quint32 id, int keyCode, int modifiers) override;
    void unregisterAll() override;

private:
    struct Registered {
        quint32 id = 0;
        int key = 0; // the toolkit's, with its modifiers
    };

    static QString actionOf(int key);
    static QStringList wholeNameOf(int key);
    Result<void> take(int key);
    void takeAgain();
    void listen();
    Q_SLOT void tell(const QString &component, const QString &action, qlonglong time);

    std::unique_ptr<QDBusServiceWatcher> m_keeper;
    QList<Registered> m_registered;
    bool m_isListening = false;
    bool m_isSilent = false; // it didn't answer: it isn't waited for again
};
