#include "capture/ui/scrolling_chrome.h"

#include "base/colors.h"
#include "capture/scrolling_session.h"
#include "capture/ui/texts.h"
#include "ui/controls.h"
#include "ui/region_frame_window.h"
#include "ui/theme.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

QString ScrollHUDView::frameCount(int frames)
{
    return CaptureUiTexts::tr("%n frame(s)", nullptr, frames);
}

ScrollHUDView::ScrollHUDView(ScrollingCaptureSession &session, QWidget *parent)
    : QWidget(parent), m_session(session), m_message(new QLabel), m_frames(new NumberLabel)
{
    m_message->setFont(Theme::font(Theme::Type::Body, QFont::Medium));
    m_frames->setFont(Theme::font(Theme::Type::Body));
    m_frames->setColor(Theme::onMaterialSecondary());
    auto *button = new QPushButton(CaptureUiTexts::tr("Done"));
    button->setFocusPolicy(Qt::NoFocus); // the keyboard stays with the program that is captured
    button->setDefault(true);
    connect(button, &QPushButton::clicked, &session, &ScrollingCaptureSession::stop);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0); // the panel has its own
    row->setSpacing(Theme::Space::group);
    row->addWidget(m_message);
    row->addWidget(m_frames);
    row->addWidget(button);
    // The count grows without moving the button away from under the pointer.
    m_frames->setMinimumWidth(int(std::ceil(Theme::tabularWidth(m_frames->font(), frameCount(88)))));
    connect(&session, &ScrollingCaptureSession::changed, this, &ScrollHUDView::refresh);
    refresh();
}

void ScrollHUDView::refresh()
{
    m_message->setText(m_session.message());
    m_frames->setText(frameCount(m_session.frames()));
}

ScrollingChrome::ScrollingChrome(ScrollingCaptureSession &session, QObject *parent)
    : QObject(parent), m_session(session)
{
    connect(&session, &ScrollingCaptureSession::shootingEnded, this, &ScrollingChrome::hide);
}

ScrollingChrome::~ScrollingChrome()
{
    putWindowsBack();
}

void ScrollingChrome::show()
{
    const QRectF region = m_session.rect().translated(m_session.screen().frame().topLeft());
    clearTheWay(region.center().toPoint());
    m_frameWindow = std::make_unique<RegionFrameWindow>(region, brandColor());
    m_hud = HUDPanel::make(region, HUDPanel::usableFrame(m_session.screen()), new ScrollHUDView(m_session));
    m_hud->installEventFilter(this);
    m_frameWindow->show();
    m_hud->show();
}

bool ScrollingChrome::eventFilter(QObject *watched, QEvent *event)
{
    // The pointer must be able to rest on the panel: a step would take it back into the region.
    if (watched == m_hud.get() && (event->type() == QEvent::Enter || event->type() == QEvent::Leave))
        m_session.setHeld(event->type() == QEvent::Enter);
    return QObject::eventFilter(watched, event);
}

void ScrollingChrome::hide()
{
    m_session.setHeld(false);
    putWindowsBack();
    if (m_frameWindow)
        m_frameWindow->hide();
    if (m_hud)
        m_hud->hide();
}

void ScrollingChrome::clearTheWay(const QPoint &target)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (!window->isVisible() || window->isMinimized() || !window->frameGeometry().contains(target) ||
            window->windowFlags().testFlag(Qt::WindowTransparentForInput))
            continue;
        // A window that the window manager doesn't know can't be put away by it.
        if (window->windowFlags().testFlag(Qt::BypassWindowManagerHint))
            window->hide();
        else
            window->showMinimized();
        m_moved.append(window);
    }
}

void ScrollingChrome::putWindowsBack()
{
    for (const QPointer<QWidget> &window : std::exchange(m_moved, {})) {
        if (!window)
            continue;
        const bool activates = !window->testAttribute(Qt::WA_ShowWithoutActivating);
        window->setAttribute(Qt::WA_ShowWithoutActivating);
        window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
        window->show();
        window->setAttribute(Qt::WA_ShowWithoutActivating, !activates);
    }
}
