#pragma once

#include <QFrame>
#include <QString>

class QGridLayout;
class QStackedLayout;
class SegmentedPicker;

// A popover to choose a stamp in, in tabs for symbols, emoji and keys.
class StampPicker : public QFrame {
    Q_OBJECT
public:
    StampPicker(const QString &current, QWidget *parent);

    void openUnder(QWidget *anchor);

Q_SIGNALS:
    void chosen(const QString &value);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makePage(const QStringList &values, const QString &current);
    void showPage(int index);

    SegmentedPicker *m_tabs;
    QStackedLayout *m_pages;
};
