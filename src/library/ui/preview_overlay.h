#pragma once

#include "library/ui/library_actions.h"

#include <QImage>
#include <QPointer>
#include <QWidget>

// One capture over the whole window. It is there as long as the model previews something; the arrow keys go
// on to the next.
class PreviewOverlay : public QWidget {
    Q_OBJECT
public:
    // Covers `window`. The actions outlive it.
    PreviewOverlay(const LibraryPorts &ports, LibraryActions &actions, QWidget *window);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow();
    void load(const QString &path);
    void take(const QString &path, const QImage &picture);
    QRectF place() const;
    QRectF frameOf(const QImage &shown) const;
    const QImage &shown() const;
    void togglePause();
    void browse(int delta);

    LibraryPorts m_ports;
    LibraryActions &m_actions;
    FilmPlayer m_player;
    QString m_path;
    QImage m_picture;
    QString m_problem;
    bool m_isLoading = false;
    QPointer<QWidget> m_before; // had the focus
};
