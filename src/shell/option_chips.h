#pragma once

#include "settings/capture_settings.h"

#include <QAbstractButton>
#include <QList>
#include <QString>

// An option of the capture panel: a switch with its symbol, its name and what it does, ready to be shown.
struct OptionChip {
    CaptureSettings::Switch option;
    QString title;
    QString symbol;
    QString detail;
};

// Which options a mode has, in the order in which they are shown.
QList<OptionChip> optionChips(CaptureMode mode);

// The chip itself: symbol, name, and a mark that tells whether it is on.
class OptionButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit OptionButton(const OptionChip &chip, QWidget *parent = nullptr);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_symbol;
};
