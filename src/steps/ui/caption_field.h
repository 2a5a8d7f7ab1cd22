#pragma once

#include <QPlainTextEdit>
#include <QPointer>
#include <QString>
#include <QWidget>

// The instruction of a step: looks like text until it is entered, by pointer or keyboard, and grows with it.
class CaptionField : public QWidget {
    Q_OBJECT
public:
    explicit CaptionField(QWidget *parent = nullptr);

    const QString &text() const { return m_text; }
    void setText(const QString &text);
    void setName(const QString &name);
    int heightForWidth(int width) const override;

Q_SIGNALS:
    void edited(const QString &text);
    void entered();
    // The user is done with it: to the next one, the one before, or back to the list.
    void left(int direction);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void enter();
    void leave();
    QFont captionFont() const;
    QRect textRect(int width) const;

    QString m_text;
    mutable std::optional<std::pair<int, QString>> m_measured; // measuring words takes long
    mutable int m_height = 0;
    QPointer<QPlainTextEdit> m_edit; // while the keyboard is here
};

// The frame of words that become a field while the pointer is over them, or the keyboard in them.
void paintFieldFrame(QWidget *field, bool isEdited);
