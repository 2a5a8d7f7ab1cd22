#pragma once

#include <QObject>
#include <QString>

// A short notice that needs no decision. `symbol` is a symbol name, such as "checkmark.circle.fill".
struct Notice {
    QString text;
    QString symbol;

    bool operator==(const Notice &) const = default;
};

// Where anyone may post a notice: the windows show it as a toast, tests read what was posted. Main thread
// only.
class NoticeBoard : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    void post(const QString &text, const QString &symbol) { Q_EMIT posted(Notice{text, symbol}); }

Q_SIGNALS:
    void posted(const Notice &notice);
};
