#pragma once

#include "steps/guide_step.h"

#include <QWidget>

class BarButton;
class CaptionField;
class QLabel;
class QPushButton;
class StepPictureView;
class StepsGuideModel;

// One step of a guide as a card: its number, its instruction, its picture, and what can be done with it.
class StepRow : public QWidget {
    Q_OBJECT
public:
    // How it stands in the list.
    struct Standing {
        int number = 1;
        bool isLast = false;
        bool isSelected = false;
        bool isCurrent = false; // for the keyboard

        bool operator==(const Standing &) const = default;
    };

    StepRow(StepsGuideModel &model, const QUuid &step, QWidget *parent = nullptr);

    const QUuid &step() const { return m_step; }
    void setStanding(const Standing &standing);
    // What the model says of the step now.
    void follow();
    void followPreview();
    // The card is out of sight.
    void releasePreview();
    int heightForWidth(int width) const override;
    // The same for a row that isn't made yet; a guess where the caption takes several lines.
    static int usualHeight(const GuideStep &step, int width);

    CaptionField &caption() { return *m_caption; }
    StepPictureView &picture() { return *m_picture; }

Q_SIGNALS:
    void heightChanged();
    void captionLeft(int direction);
    void captionEntered();
    // The card itself, not a control on it.
    void pressed(Qt::KeyboardModifiers modifiers);
    void dragged(QPoint global);
    void dropped();
    void menuWanted(QPoint global);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    BarButton *addAction(const QString &symbol, const QString &text, const QString &help);
    void makeFooter();
    void place();
    QRect numberRect() const;

    StepsGuideModel &m_model;
    QUuid m_step;
    Standing m_standing;
    CaptionField *m_caption;
    StepPictureView *m_picture;
    QLabel *m_hint;
    QPushButton *m_back; // to the picture, or the place, that was recorded
    BarButton *m_edit;
    BarButton *m_delete;
    BarButton *m_up;
    BarButton *m_down;
    QPoint m_pressedAt;
    bool m_isPressed = false;
    bool m_isDragged = false;
};
