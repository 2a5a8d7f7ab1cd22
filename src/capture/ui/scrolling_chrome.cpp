#include "capture/ui/scrolling_chrome.h"

#include "base/colors.h"
#include "capture/scrolling_session.h"
#include "capture/ui/texts.h"
#include "ui/controls.h"
#include "ui/region_frame_window.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QWindow>

namespace {

constexpr int kHoldAgain = 50; // milliseconds

} // namespace

QString ScrollHUDView::gained(int frames, qint64 rows)
{
    return CaptureUiTexts::tr("%1 · %2 px")
        .arg(CaptureUiTexts::tr("%n frame(s)", nullptr, frames), QLocale().toString(rows));
}

ScrollHUDView::ScrollHUDView(ScrollingCaptureSession &session, QWidget *parent)
    : QWidget(parent), m_session(session), m_message(new QLabel), m_gained(new NumberLabel)
{
    m_message->setFont(Theme::font(Theme::Type::Body, QFont::Medium));
    m_gained->setFont(Theme::font(Theme::Type::Body));
    m_gained->setColor(Theme::onMaterialSecondary());
    const auto makeButton = [](const QString &text, const QString &help) {
        auto *button = new QPushButton(text);
        button->setFocusPolicy(Qt::NoFocus); // the keyboard stays with the program that is captured
        TipCenter::describe(button, {text, help, {}});
        return button;
    };
    setAccessibleName(CaptureUiTexts::tr("Scrolling capture"));
    m_goOn = makeButton(CaptureUiTexts::tr("Go On"), CaptureUiTexts::tr("As many frames again."));
    QPushButton *done = makeButton(CaptureUiTexts::tr("Done"), CaptureUiTexts::tr("Keep what was captured."));
    done->setDefault(true);
    done->setObjectName(QStringLiteral("done"));
    m_goOn->setObjectName(QStringLiteral("goOn"));
    connect(m_goOn, &QPushButton::clicked, &session, &ScrollingCaptureSession::goOn);
    connect(done, &QPushButton::clicked, &session, &ScrollingCaptureSession::stop);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0); // the panel has its own
    row->setSpacing(Theme::Space::group);
    row->addWidget(m_message);
    row->addWidget(m_gained);
    row->addWidget(m_goOn);
    row->addWidget(done);
    // What is told grows without moving the button away from under the pointer.
    m_gained->setMinimumWidth(int(std::ceil(Theme::tabularWidth(m_gained->font(), gained(88, 88888)))));
    connect(&session, &ScrollingCaptureSession::changed, this, &ScrollHUDView::refresh);
    refresh();
}

void ScrollHUDView::refresh()
{
    m_message->setText(m_session.message());
    m_gained->setText(gained(m_session.frames(), m_session.height()));
    m_goOn->setVisible(m_session.isAtLimit());
}

ScrollingChrome::ScrollingChrome(ScrollingCaptureSession &session, QObject *parent)
    : QObject(parent), m_session(session)
{
    connect(&session, &ScrollingCaptureSession::shootingEnded, this, &ScrollingChrome::hide);
    m_holdAgain.setSingleShot(true);
    m_holdAgain.setInterval(kHoldAgain);
    connect(&m_holdAgain, &QTimer::timeout, this, &ScrollingChrome::holdKeys);
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
    connect(&m_session, &ScrollingCaptureSession::changed, this, [this, region] {
        if (std::exchange(m_wasAtLimit, m_session.isAtLimit()) != m_session.isAtLimit()) // a button more or less
            m_hud->placeNear(region, HUDPanel::usableFrame(m_session.screen()));
        holdKeys();
    });
}

// Whoever scrolls by hand may do it with the keyboard.
void ScrollingChrome::holdKeys()
{
    if (!m_session.isAutomatic() || m_holdsKeys || !m_hud->isVisible())
        return;
    m_hud->grabKeyboard();
    m_holdsKeys = !m_hud->windowHandle() || m_hud->windowHandle()->setKeyboardGrabEnabled(true);
    if (!m_holdsKeys) // someone else has it, such as an open menu
        m_holdAgain.start();
}

bool ScrollingChrome::key(const QKeyEvent &event)
{
    if (event.key() == Qt::Key_Escape)
        m_session.cancel();
    else if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        m_session.stop();
    else
        return false;
    return true;
}

bool ScrollingChrome::eventFilter(QObject *watched, QEvent *event)
{
    // The pointer must be able to rest on the panel: a step would take it back into the region.
    if (watched == m_hud.get() && (event->type() == QEvent::Enter || event->type() == QEvent::Leave))
        m_session.setHeld(event->type() == QEvent::Enter);
    if (watched == m_hud.get() && event->type() == QEvent::KeyPress)
        return key(*static_cast<QKeyEvent *>(event));
    return QObject::eventFilter(watched, event);
}

void ScrollingChrome::hide()
{
    m_session.setHeld(false);
    putWindowsBack();
    if (m_frameWindow)
        m_frameWindow->hide();
    m_holdAgain.stop();
    if (m_hud) {
        m_hud->releaseKeyboard();
        m_hud->hide();
    }
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
