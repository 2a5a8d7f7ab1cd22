#pragma once

#include <QRectF>
#include <QTimer>
#include <QWidget>

// The shortcut that was pressed last, over the lower edge of what is filmed. Goes by itself.
class KeyBadgePanel : public QWidget {
    Q_OBJECT
public:
    KeyBadgePanel();
    void showKey(const QString &label, const QRectF &region);
    const QString &label() const { return m_label; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QString m_label;
    QTimer m_gone;
};
