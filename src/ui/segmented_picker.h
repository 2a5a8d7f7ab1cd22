#pragma once

#include <QList>
#include <QRect>
#include <QSet>
#include <QString>
#include <QVariantAnimation>
#include <QWidget>

// One of a few choices on one track, with a sliding selection. Arrow keys move the choice.
class SegmentedPicker : public QWidget {
    Q_OBJECT
public:
    struct Segment {
        QString text; // also the accessible name
        QString symbol;
        bool showsText = true;
    };

    explicit SegmentedPicker(QWidget *parent = nullptr);
    void setSegments(const QList<Segment> &segments);
    const QList<Segment> &segments() const { return m_segments; }
    int current() const { return m_current; }
    // Does not tell chosen().
    void setCurrent(int index);
    // All segments equally wide, filling the widget.
    void setStretches(bool stretches);
    // Without, a segment with a symbol shows that alone.
    void setShowsText(bool shows);
    // The words under the symbols instead of beside them.
    void setLabelsUnder(bool under);
    void setSegmentEnabled(int index, bool enabled);
    bool isSegmentEnabled(int index) const { return !m_disabled.contains(index); }
    // It chooses what is shown beside it, rather than a value.
    void setIsTabs(bool isTabs) { m_isTabs = isTabs; }
    bool isTabs() const { return m_isTabs; }
    // As the user does, and tells chosen().
    void choose(int index);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QRect segmentRect(int index) const;

Q_SIGNALS:
    void chosen(int index); // by the user

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool event(QEvent *event) override;

private:
    int nextEnabled(int from, int step) const;
    int segmentAt(const QPoint &position) const;
    QRect rectFromLeft(int index) const;
    int naturalWidth(const Segment &segment) const;
    bool showsText(const Segment &segment) const
    {
        return segment.showsText && (m_showsText || segment.symbol.isEmpty());
    }

    QList<Segment> m_segments;
    int m_current = 0;
    int m_hovered = -1;
    bool m_isTabs = false;
    bool m_showsText = true;
    bool m_stretches = false;
    bool m_labelsUnder = false;
    QSet<int> m_disabled;
    QVariantAnimation m_slide; // of the selection's rectangle
};
