#include "app/status_item.h"

#include "app/activity.h"
#include "app/texts.h"
#include "artwork/symbols.h"
#include "base/colors.h"
#include "base/log.h"
#include "settings/app_settings.h"
#include "settings/capture_settings.h"
#include "ui/shortcut_text.h"
#include "ui/symbol.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QPainter>

namespace {

// Trays are dark on one desktop and light on the next: the brand's colour reads on both.
QColor trayColor()
{
    return brandColor().lighter(115);
}

// Trays that show the menu by themselves do it in their own colours, light or dark, with our icons: a grey
// with a contrast of 3.6 on white as on #2E2E2E.
constexpr QRgb kMenuInk = qRgb(0x85, 0x85, 0x85);

// The symbol in all sizes that trays and windows ask for, with `paint` over each.
QIcon drawnIcon(const std::function<void(QPainter &, int side)> &paint)
{
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 48, 64}) {
        QImage image = Symbols::image(QStringLiteral("camera.viewfinder"), side, trayColor());
        if (image.isNull())
            continue;
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        paint(painter, side);
        painter.end();
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace

StatusItem::StatusItem(Actions actions, const Activity &activity, const AppSettings &prefs,
                       CaptureSettings &settings, QObject *parent)
    : QObject(parent),
      m_actions(std::move(actions)),
      m_activity(activity),
      m_prefs(prefs),
      m_settings(settings),
      m_menu(std::make_unique<QMenu>())
{
    connect(&m_tray, &QSystemTrayIcon::activated, this, &StatusItem::clicked);
    connect(m_menu.get(), &QMenu::aboutToShow, this, &StatusItem::refill);
    connect(&activity, &Activity::changed, this, &StatusItem::update);
}

StatusItem::~StatusItem() = default;

QIcon StatusItem::icon()
{
    return drawnIcon([](QPainter &, int) {});
}

QIcon StatusItem::currentIcon() const
{
    if (m_countdown > 0) {
        return drawnIcon([this](QPainter &painter, int side) {
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.setBrush(trayColor());
            painter.drawEllipse(QRect(0, 0, side, side));
            QFont font = QApplication::font();
            font.setPixelSize(side * 7 / 10);
            font.setBold(true);
            painter.setFont(font);
            painter.setPen(Qt::white);
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
            painter.drawText(QRect(0, 0, side, side), Qt::AlignCenter, QString::number(m_countdown));
        });
    }
    if (!m_activity.isRecording() && !m_activity.isStepping())
        return icon();
    // A dot in the corner, cut out of the icon, as a sign that the screen or the clicks are watched.
    const QColor dot = m_activity.isRecording() ? QColor(0xff, 0x3b, 0x30) : QColor(0xff, 0x9f, 0x0a);
    return drawnIcon([dot](QPainter &painter, int side) {
        const double radius = side * 0.26;
        const QPointF center(side - radius, side - radius);
        painter.setCompositionMode(QPainter::CompositionMode_Clear);
        painter.drawEllipse(center, radius * 1.3, radius * 1.3);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        painter.setBrush(dot);
        painter.drawEllipse(center, radius, radius);
    });
}

void StatusItem::show()
{
    update();
    refill();
    m_tray.setContextMenu(m_menu.get());
    m_tray.show();
}

void StatusItem::update()
{
    m_tray.setIcon(currentIcon());
    m_tray.setToolTip(QStringLiteral("Lumenpost") + m_title);
    if (!m_filledFor.isEmpty())
        refill();
}

// Trays that show the menu by themselves read it when they like, and show what they read last: it is filled
// before it is asked for, and not exchanged under a tray that has it open.
void StatusItem::refill()
{
    QStringList made{QString::number(m_activity.isRecording()), QString::number(m_activity.isStepping()),
                     QString::number(m_actions.hasPins()),
                     QString::number(m_settings.isOn(CaptureSettings::Switch::PreviewInEditor))};
    for (const HotKeyInfo &key : kHotKeys)
        made += m_prefs.hotkey(key.action).display() +
                QString::number(!m_actions.isAvailable || m_actions.isAvailable(key.action));
    if (const QString now = made.join(QLatin1Char('|')); std::exchange(m_filledFor, now) != now)
        rebuiltMenu();
}

void StatusItem::setCountdown(int seconds)
{
    m_countdown = seconds;
    setTitle(seconds > 0 ? QStringLiteral(" %1").arg(seconds) : QString());
}

void StatusItem::setTitle(const QString &title)
{
    m_title = title;
    update();
}

void StatusItem::clicked(QSystemTrayIcon::ActivationReason reason)
{
    if (m_actions.bringDialogForward()) {
        Log::info(QStringLiteral("Menu bar click while a dialog was open — bringing it to the front"));
        return;
    }
    Log::info(QStringLiteral("Menu bar icon clicked (panel %1)").arg(m_actions.panelState()));
    // The middle button is for what is done most.
    if (reason == QSystemTrayIcon::MiddleClick && m_actions.perform)
        m_actions.perform(HotKeyAction::Capture);
    if (reason != QSystemTrayIcon::Trigger)
        return;
    if (m_actions.togglePanel && !QGuiApplication::keyboardModifiers().testFlag(Qt::ControlModifier))
        m_actions.togglePanel(m_tray.geometry());
    else
        m_menu->popup(QCursor::pos());
}

void StatusItem::addItem(const QString &title, const QString &symbol, HotKeyAction action)
{
    const bool isAvailable = m_actions.perform && (!m_actions.isAvailable || m_actions.isAvailable(action));
    addItem(title, symbol,
            isAvailable ? [this, action] { m_actions.perform(action); } : std::function<void()>());
    QAction *item = m_menu->actions().constLast();
    item->setText(title + QLatin1Char('\t') + shortcutText(m_prefs.hotkey(action).display()));
}

void StatusItem::addItem(const QString &title, const QString &symbol, const std::function<void()> &call)
{
    // An ampersand would be taken for the mark of a letter.
    QAction *item = m_menu->addAction(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    if (!symbol.isEmpty())
        item->setIcon(symbolIcon(symbol, kMenuInk));
    item->setEnabled(static_cast<bool>(call));
    if (call)
        connect(item, &QAction::triggered, this, call, Qt::QueuedConnection);
}

QMenu &StatusItem::rebuiltMenu()
{
    m_menu->clear();
    addItem(AppTexts::tr("Capture Region or Window"), QStringLiteral("camera.viewfinder"),
            HotKeyAction::Capture);
    addItem(AppTexts::tr("Capture Full Screen"), QStringLiteral("rectangle.inset.filled"),
            HotKeyAction::FullScreen);
    addItem(AppTexts::tr("Capture in 3 Seconds"), QStringLiteral("timer"), HotKeyAction::Delayed);
    addItem(AppTexts::tr("Scrolling Capture"), QStringLiteral("arrow.up.and.down"),
            HotKeyAction::Scrolling);
    addItem(m_activity.isRecording() ? AppTexts::tr("Stop Recording") : AppTexts::tr("Record Screen"), QStringLiteral("video.fill"), HotKeyAction::Record);
    addItem(m_activity.isStepping() ? AppTexts::tr("Finish Steps") : AppTexts::tr("Record Steps (How-To Guide)"), QStringLiteral("list.number"),
            HotKeyAction::Steps);
    addItem(AppTexts::tr("Grab Text from Screen"), QStringLiteral("text.viewfinder"),
            HotKeyAction::GrabText);
    m_menu->addSeparator();
    addItem(AppTexts::tr("Open Library…"), QStringLiteral("photo.on.rectangle"), HotKeyAction::Library);
    addItem(AppTexts::tr("Pin Last Capture"), QStringLiteral("pin"), HotKeyAction::PinLast);
    addItem(AppTexts::tr("Open Image…"), QStringLiteral("photo"), m_actions.openImage);
    if (m_actions.hasPins()) {
        // No list of windows shows them: this is their way for the keyboard.
        addItem(AppTexts::tr("Go to Pinned Image"), QStringLiteral("pin"), m_actions.goToPin);
        addItem(AppTexts::tr("Close All Pins"), QStringLiteral("pin.slash"), m_actions.closePins);
    }
    m_menu->addSeparator();
    QAction *editor = m_menu->addAction(AppTexts::tr("Open Editor After Capture"));
    editor->setCheckable(true);
    editor->setChecked(m_settings.isOn(CaptureSettings::Switch::PreviewInEditor));
    connect(editor, &QAction::toggled, this,
            [this](bool on) { m_settings.setOn(CaptureSettings::Switch::PreviewInEditor, on); });
    addItem(AppTexts::tr("Settings…"), QStringLiteral("gearshape"), m_actions.showSettings);
    addItem(AppTexts::tr("Welcome & Permissions…"), QStringLiteral("sparkles"), m_actions.showWelcome);
    m_menu->addSeparator();
    addItem(AppTexts::tr("Quit Lumenpost"), QStringLiteral("power"), m_actions.quit);
    return *m_menu;
}
