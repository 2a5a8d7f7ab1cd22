#include "app/status_item.h"

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

StatusItem::StatusItem(Actions actions, const AppSettings &prefs, CaptureSettings &settings, QObject *parent)
    : QObject(parent),
      m_actions(std::move(actions)),
      m_prefs(prefs),
      m_settings(settings),
      m_menu(std::make_unique<QMenu>())
{
    connect(&m_tray, &QSystemTrayIcon::activated, this, &StatusItem::clicked);
    connect(m_menu.get(), &QMenu::aboutToShow, this, [this] { rebuiltMenu(); });
}

StatusItem::~StatusItem() = default;

QIcon StatusItem::icon(int countdown)
{
    // Trays are dark on one desktop and light on the next: the brand's colour reads on both.
    const QColor color = brandColor().lighter(115);
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 44, 48, 64}) {
        QImage image = Symbols::image(QStringLiteral("camera.viewfinder"), side, color);
        if (image.isNull())
            continue;
        if (countdown > 0) {
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setCompositionMode(QPainter::CompositionMode_Source);
            painter.setPen(Qt::NoPen);
            painter.setBrush(color);
            painter.drawEllipse(image.rect());
            QFont font = QApplication::font();
            font.setPixelSize(side * 7 / 10);
            font.setBold(true);
            painter.setFont(font);
            painter.setPen(Qt::white);
            painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
            painter.drawText(image.rect(), Qt::AlignCenter, QString::number(countdown));
        }
        icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

void StatusItem::show()
{
    m_tray.setIcon(icon());
    m_tray.setToolTip(QStringLiteral("Lumenpost"));
    m_tray.setContextMenu(m_menu.get());
    m_tray.show();
}

void StatusItem::setCountdown(int seconds)
{
    m_tray.setIcon(icon(seconds));
    m_tray.setToolTip(seconds > 0 ? QStringLiteral("Lumenpost %1").arg(seconds)
                                  : QStringLiteral("Lumenpost"));
}

void StatusItem::clicked(QSystemTrayIcon::ActivationReason reason)
{
    if (m_actions.bringDialogForward()) {
        Log::info(QStringLiteral("Menu bar click while a dialog was open — bringing it to the front"));
        return;
    }
    Log::info(QStringLiteral("Menu bar icon clicked (panel closed)"));
    if (reason == QSystemTrayIcon::Trigger)
        m_menu->popup(QCursor::pos());
}

void StatusItem::addItem(const QString &title, const QString &symbol, HotKeyAction action)
{
    const bool isAvailable = m_actions.perform && (!m_actions.isAvailable || m_actions.isAvailable(action));
    addItem(title, symbol,
            isAvailable ? [this, action] { m_actions.perform(action); } : std::function<void()>());
    QAction *item = m_menu->actions().constLast();
    item->setText(title + QLatin1Char('\t') +
                  shortcutText(m_prefs.hotkey(action).display(), ShortcutScope::SystemWide));
}

void StatusItem::addItem(const QString &title, const QString &symbol, const std::function<void()> &call)
{
    // An ampersand would be taken for the mark of a letter.
    QAction *item = m_menu->addAction(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    if (!symbol.isEmpty())
        item->setIcon(symbolIcon(symbol));
    item->setEnabled(static_cast<bool>(call));
    if (call)
        connect(item, &QAction::triggered, this, call, Qt::QueuedConnection);
}

QMenu &StatusItem::rebuiltMenu()
{
    m_menu->clear();
    addItem(QStringLiteral("Capture Region or Window"), QStringLiteral("camera.viewfinder"),
            HotKeyAction::Capture);
    addItem(QStringLiteral("Capture Full Screen"), QStringLiteral("rectangle.inset.filled"),
            HotKeyAction::FullScreen);
    addItem(QStringLiteral("Capture in 3 Seconds"), QStringLiteral("timer"), HotKeyAction::Delayed);
    addItem(QStringLiteral("Scrolling Capture"), QStringLiteral("arrow.up.and.down"),
            HotKeyAction::Scrolling);
    addItem(QStringLiteral("Record Screen"), QStringLiteral("video.fill"), HotKeyAction::Record);
    addItem(QStringLiteral("Record Steps (How-To Guide)"), QStringLiteral("list.number"),
            HotKeyAction::Steps);
    addItem(QStringLiteral("Grab Text from Screen"), QStringLiteral("text.viewfinder"),
            HotKeyAction::GrabText);
    m_menu->addSeparator();
    addItem(QStringLiteral("Open Library…"), QStringLiteral("photo.on.rectangle"), HotKeyAction::Library);
    addItem(QStringLiteral("Pin Last Capture"), QStringLiteral("pin"), HotKeyAction::PinLast);
    addItem(QStringLiteral("Open Image…"), QStringLiteral("photo"), m_actions.openImage);
    if (m_actions.hasPins())
        addItem(QStringLiteral("Close All Pins"), QStringLiteral("pin.slash"), m_actions.closePins);
    m_menu->addSeparator();
    QAction *editor = m_menu->addAction(QStringLiteral("Open Editor After Capture"));
    editor->setCheckable(true);
    editor->setChecked(m_settings.isOn(CaptureSettings::Switch::PreviewInEditor));
    connect(editor, &QAction::toggled, this,
            [this](bool on) { m_settings.setOn(CaptureSettings::Switch::PreviewInEditor, on); });
    addItem(QStringLiteral("Settings…"), QStringLiteral("gearshape"), m_actions.showSettings);
    addItem(QStringLiteral("Welcome & Permissions…"), QStringLiteral("sparkles"), m_actions.showWelcome);
    m_menu->addSeparator();
    addItem(QStringLiteral("Quit Lumenpost"), QStringLiteral("power"), m_actions.quit);
    return *m_menu;
}
