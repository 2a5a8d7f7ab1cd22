#pragma once

#include "ui/theme.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QWidget>

// The small pieces that panel, settings and guide are made of.

// On or off: a knob in a track, for what takes effect at once. Its name is the row's.
class ToggleSwitch : public QAbstractButton {
    Q_OBJECT
public:
    explicit ToggleSwitch(QWidget *parent = nullptr);
    QSize sizeHint() const override { return {38, Theme::Size::target}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

// A button of words alone in the accent colour, for what is less than a button.
class WordButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit WordButton(const QString &text, QWidget *parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

// The large button in accent with a symbol, for the one thing that a window is for.
class AccentButton : public QPushButton {
    Q_OBJECT
public:
    AccentButton(const QString &symbol, const QString &text, QWidget *parent = nullptr);
    void setSymbol(const QString &symbol);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString m_symbol;
};

// A list to choose from that a turning wheel scrolls past.
class Picker : public QComboBox {
    Q_OBJECT
public:
    explicit Picker(QWidget *parent = nullptr);

protected:
    void wheelEvent(QWheelEvent *event) override;
};

// Words in the secondary colour, wrapped, at the size given.
class NoteLabel : public QLabel {
    Q_OBJECT
public:
    explicit NoteLabel(const QString &text, Theme::Type type = Theme::Type::Caption, QWidget *parent = nullptr);
    // In the colour of warnings, as for something that doesn't work.
    void setWarning(bool on);

protected:
    void changeEvent(QEvent *event) override;

private:
    void recolor();
    bool m_isWarning = false;
    bool m_isRecoloring = false;
};

// Lays its items out like words: left to right, on as many lines as they need.
class FlowLayout : public QLayout {
    Q_OBJECT
public:
    explicit FlowLayout(QWidget *parent = nullptr);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override { m_items.append(item); }
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arranged({0, 0, width, 0}, false); }
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    // The height that the items take in the rectangle's width; moves them there as well when asked to.
    int arranged(const QRect &rect, bool moves) const;

    QList<QLayoutItem *> m_items;
};
