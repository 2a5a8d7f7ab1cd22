#pragma once

#include <QImage>
#include <QWidget>

// A picture as large as its place allows, with round corners and a hairline. A click is told.
class PicturePane : public QWidget {
    Q_OBJECT
public:
    explicit PicturePane(QWidget *parent = nullptr);

    void setPicture(const QImage &picture);
    // Stands in the middle: of a film, and of what has no picture.
    void setSymbol(const QString &symbol);
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override { return {240, heightForWidth(240)}; }
    void setTallest(int height) { m_tallest = height; }

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QImage m_picture;
    QString m_symbol;
    int m_tallest = 260;
};
