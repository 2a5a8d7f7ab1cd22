#pragma once

#include "base/notice.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <memory>
#include <vector>

class Toast;

// Where a toast of `size` goes on a screen whose usable part is `visible` (global points, y down): in the
// middle, its lower edge 80 above the usable part's bottom.
QPointF toastPosition(const QRectF &visible, const QSizeF &size);

// Shows what is posted on a notice board as toasts: on the screen under the pointer, for 2.2 seconds, then
// fading for 0.3. They never take the keyboard; several at once lie over each other.
class ToastPresenter : public QObject {
    Q_OBJECT
public:
    explicit ToastPresenter(NoticeBoard &board, QObject *parent = nullptr);
    ~ToastPresenter() override;

    void show(const Notice &notice);
    // How many are on the screen now.
    int count() const { return static_cast<int>(m_toasts.size()); }

private:
    void remove(Toast *toast);

    std::vector<std::unique_ptr<Toast>> m_toasts;
};
