#pragma once

#include <QImage>
#include <QList>
#include <QObject>
#include <QString>
#include <functional>

// What a notice offers to do next, as a button. `call` must be safe for as long as the notice can be shown,
// also after whoever posted it has gone.
struct NoticeAction {
    QString text;
    QString symbol;
    std::function<void()> call;
};

// A short notice that needs no decision. `symbol` is a symbol name, such as "checkmark.circle.fill".
struct Notice {
    QString text;
    QString symbol;
    QImage picture = {}; // of what it tells, shown small; any size
    QString file = {};   // that can be dragged out of the picture
    QList<NoticeAction> actions = {};

    // Whether they say the same, whatever they show and offer.
    bool operator==(const Notice &other) const { return text == other.text && symbol == other.symbol; }
};

// Where anyone may post a notice: the windows show it as a toast, tests read what was posted. Main thread
// only.
class NoticeBoard : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;
    void post(const QString &text, const QString &symbol) { post(Notice{text, symbol}); }
    void post(const Notice &notice) { Q_EMIT posted(notice); }

Q_SIGNALS:
    void posted(const Notice &notice);
};
