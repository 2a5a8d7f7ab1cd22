#pragma once

#include "base/result.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class QHBoxLayout;
class QLayout;
class QPushButton;
class QVBoxLayout;

// A modal card over its window: a heading with its symbol (or none), content, and buttons at the bottom
// right. The window behind is dimmed and can't be reached. Return presses the primary button, Esc the
// cancelling one.
//
// It is a child of its window and deletes itself after closing; the focus goes back where it was.
class Sheet : public QWidget {
    Q_OBJECT
public:
    // `over` is any widget of the window.
    Sheet(QWidget *over, const QString &symbol, const QString &title);
    ~Sheet() override;

    // Where the content goes, between heading and buttons.
    QVBoxLayout *content() const { return m_content; }
    void addText(const QString &text);
    // Buttons stand in the order of the calls, left to right; each closes the sheet before its clicked()
    // arrives, unless it is to stay.
    enum class After { Closes, Stays };
    QPushButton *addButton(const QString &title, After after = After::Closes);
    // The one in accent at the far right, pressed by Return.
    QPushButton *addPrimaryButton(const QString &title, After after = After::Closes);
    // Pressed by Esc. Without one, Esc closes.
    QPushButton *addCancelButton(const QString &title);
    void setCardWidth(int width);
    // Makes the card as high as its content is now, as far as the window allows.
    void fit();

    void open();
    void close();

    // What failed, in the error's own words. Brings the window to the front.
    static void alert(QWidget &window, const Error &error);

Q_SIGNALS:
    void closed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    class Card;
    QLayout *makeHeading(const QString &symbol, const QString &title);
    QPushButton *insertButton(const QString &title, After after);

    Card *m_card;
    QVBoxLayout *m_content;
    QHBoxLayout *m_buttons;
    QPointer<QPushButton> m_primary;
    QPointer<QPushButton> m_cancel;
    QPointer<QWidget> m_before; // had the focus
};
