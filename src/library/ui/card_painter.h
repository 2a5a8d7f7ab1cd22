#pragma once

#include "library/library.h"
#include "library/ui/card_pictures.h"
#include "ui/theme.h"

#include <QPointF>
#include <QRectF>
#include <QString>

class QPainter;

// Paints a card of the grid: its picture, what stands under it, its ring and, under the pointer, its buttons.
class CardPainter {
public:
    struct Card {
        LibraryItem item;
        QRectF picture;                              // where it goes, in points
        const CardPictures::Card *content = nullptr; // null until it is read
        bool isFavorite = false;
        bool isSelected = false;
        bool isCurrent = false; // where the keyboard is
        bool isHovered = false;
        QImage film; // what a playing film shows now
        QPointF pointer;
    };

    // How far the ring of a selected card reaches beyond it.
    static constexpr qreal kReach = 8;
    // A picture may lose this part of itself to fill its card; others are shown whole.
    static constexpr qreal kMostCropped = 0.3;

    // Both outlive it. Expects antialiasing.
    CardPainter(QPainter &painter, const Theme::Tokens &theme) : m_painter(painter), m_theme(theme) {}

    void paint(const Card &card);

private:
    void paintPicture(const Card &card);
    void paintContent(const QRectF &rect, const QImage &picture);
    void paintBadge(const Card &card);
    void paintRing(const Card &card);
    void paintActions(const Card &card);
    void paintText(const Card &card);
    void drawElided(const QRectF &rect, const QString &text, Qt::TextElideMode mode);

    QPainter &m_painter;
    const Theme::Tokens &m_theme;
};

// "MP4 · 1280 × 720 · 3.2 MB": the kind of a film, the size in pixels where it is known, and that of the
// file.
QString cardDetail(const LibraryItem &item, const CardPictures::Card *content);
