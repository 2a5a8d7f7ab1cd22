#pragma once

#include "base/notice.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <memory>
#include <vector>

class ToastPanel;

// Where a toast of `size` goes on a screen whose usable part is `visible` (global points, y down): in the
// middle, its lower edge 80 above the usable part's bottom.
QPointF toastPosition(const QRectF &visible, const QSizeF &size);

// Shows what is posted on a notice board as toasts: on the screen under the pointer, for 2.2 seconds, or 5
// for one that offers something to do, longer where there is much to read, then fading for 0.3. They never
// take the keyboard. Several at once lie over each other, but none over one that can still be used.
class ToastPresenter : public QObject {
    Q_OBJECT
public:
    explicit ToastPresenter(NoticeBoard &board, QObject *parent = nullptr);
    ~ToastPresenter() override;

    void show(const Notice &notice);
    // How many are on the screen now.
    int count() const { return static_cast<int>(m_toasts.size()); }

private:
    void makeRoom(const QRect &visible, QPoint &topLeft, const QSize &size) const;
    void remove(ToastPanel *toast);

    std::vector<std::unique_ptr<ToastPanel>> m_toasts;
};
