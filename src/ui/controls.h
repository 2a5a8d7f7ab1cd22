#pragma once

#include "ui/segmented_picker.h"
#include "ui/theme.h"

#include <QAbstractButton>
#include <QColor>
#include <QFrame>
#include <QSlider>
#include <QString>
#include <QVariantAnimation>
#include <QWidget>

class QMenu;

// A button of a bar: a symbol and perhaps a label, without a box. Checkable ones show an accent wash when on.
class BarButton : public QAbstractButton {
    Q_OBJECT
public:
    enum class Label { None, Beside, Under };

    BarButton(const QString &symbol, const QString &text, Label label, QWidget *parent = nullptr);

    void setSymbol(const QString &symbol);
    const QString &symbol() const { return m_symbol; }
    void setLabel(Label label);
    // A small arrow tells that the button opens a menu; a click, Return, Space or Down open it under the
    // button. The button takes the menu over.
    void setMenu(QMenu *menu);
    QMenu *menu() const { return m_menu; }
    void openMenu();
    // A dot of this colour replaces the symbol, as for a colour to choose.
    void setSwatch(const QColor &color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    // Before the menu opens, to bring it up to date.
    void menuAboutToOpen();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_symbol;
    Label m_label;
    QMenu *m_menu = nullptr;
    QColor m_swatch;
};

// A thin vertical or horizontal line between groups.
class Hairline : public QWidget {
    Q_OBJECT
public:
    explicit Hairline(Qt::Orientation orientation, QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::Orientation m_orientation;
};

// A pill that can be switched on, with a check mark when it is.
class Chip : public QAbstractButton {
    Q_OBJECT
public:
    explicit Chip(const QString &text, const QString &symbol = {}, QWidget *parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
};

// A colour to choose: a circle, with a ring around it when chosen.
class Swatch : public QAbstractButton {
    Q_OBJECT
public:
    Swatch(const QColor &color, const QString &name, QWidget *parent = nullptr);
    const QColor &color() const { return m_color; }
    void setColor(const QColor &color);
    QSize sizeHint() const override { return {Theme::Size::target, Theme::Size::target}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color;
};

// A slider with a name at its left and its value, in digits of equal width, at its right.
class ValueSlider : public QWidget {
    Q_OBJECT
public:
    ValueSlider(const QString &name, int minimum, int maximum, QWidget *parent = nullptr);
    void setName(const QString &name);
    int value() const { return m_slider->value(); }
    // Does not tell changed().
    void setValue(int value);
    // How the value is written; the plain number without one.
    void setFormat(std::function<QString(int)> format);
    QSlider *slider() const { return m_slider; }

Q_SIGNALS:
    void changed(int value); // by the user

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

private:
    int nameWidth() const;
    int valueWidth() const;

    QString m_name;
    QSlider *m_slider;
    std::function<QString(int)> m_format;
};

// One line of text whose digits keep their places, for sizes, times, counts and zoom.
class NumberLabel : public QWidget {
    Q_OBJECT
public:
    explicit NumberLabel(QWidget *parent = nullptr);
    void setText(const QString &text);
    const QString &text() const { return m_text; }
    void setAlignment(Qt::Alignment alignment)
    {
        m_alignment = alignment;
        update();
    }
    // Otherwise the secondary colour of the theme.
    void setColor(const QColor &color)
    {
        m_color = color;
        update();
    }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    QColor m_color;
    Qt::Alignment m_alignment = Qt::AlignLeft;
};

// A turning arc, for work without a known length. Still with reduced motion.
class Spinner : public QWidget {
    Q_OBJECT
public:
    explicit Spinner(int size, QWidget *parent = nullptr);
    QSize sizeHint() const override { return {m_size, m_size}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    int m_size;
    QVariantAnimation m_turn;
};

// What stands where a list has nothing to show: a large symbol, a title, and a line that says what to do
// next.
class EmptyState : public QWidget {
    Q_OBJECT
public:
    EmptyState(const QString &symbol, const QString &title, const QString &text, QWidget *parent = nullptr);
};
