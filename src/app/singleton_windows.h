#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

class Defaults;

// Brings a window of this program before those of all others: out of its minimised state, with the keyboard,
// now and once more when the window manager has had its say.
void bringToFront(QWidget *window);
// On the primary screen, no larger than its room.
void placeInTheMiddle(QWidget *window);

// The windows of which there is one each. They are made when first asked for, kept while they are open, and
// gone when they close.
class SingletonWindows : public QObject {
    Q_OBJECT
public:
    enum class Kind { Library, Settings, Welcome };
    using Make = std::function<std::unique_ptr<QWidget>()>;

    explicit SingletonWindows(Defaults &defaults, QObject *parent = nullptr);
    ~SingletonWindows() override;

    // How a window of that kind is made. Its title and content are the maker's; size and place are kept here.
    void provide(Kind kind, Make make);
    bool canShow(Kind kind) const { return m_makers.contains(kind); }
    // Opens it, or brings the open one to the front; null when there is no such window in this build.
    QWidget *show(Kind kind);
    QWidget *window(Kind kind) const { return m_open.value(kind); }

Q_SIGNALS:
    // A window was opened or has closed.
    void changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place(Kind kind, QWidget &window) const;
    void storePlace(Kind kind, const QWidget &window) const;

    Defaults &m_defaults;
    QHash<Kind, Make> m_makers;
    QHash<Kind, QPointer<QWidget>> m_open;
};
