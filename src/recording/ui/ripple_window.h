#pragma once

#include "recording/recording_extras.h"

#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

// One ripple of a click: shown, played and gone by itself, or with its owner.
class RippleWindow : public QWidget {
    Q_OBJECT
public:
    RippleWindow(const ClickRipple &ripple, QObject *owner);
    void play();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void advance(double seconds);
    QRectF ring() const;

    ClickRipple m_ripple;
    bool m_reducesMotion;
    ClickRipple::Look m_look;
    QVariantAnimation m_time;
};
