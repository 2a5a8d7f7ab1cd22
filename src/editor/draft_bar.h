#pragma once

#include <QWidget>

// A line over the canvas: the edits that are shown were never saved. Goes once it has been answered.
class DraftBar : public QWidget {
    Q_OBJECT
public:
    // What would be lost: edits of a saved picture, or a picture that was never saved at all.
    enum class Unsaved { Edits, Picture };

    explicit DraftBar(Unsaved what, QWidget *parent = nullptr);

Q_SIGNALS:
    // The user wants none of it.
    void discarded();

protected:
    void paintEvent(QPaintEvent *event) override;
};
