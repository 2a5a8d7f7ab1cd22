#include "ui/tips.h"

#include "settings/app_settings.h"
#include "ui/floating.h"
#include "ui/shortcut_text.h"
#include "ui/theme.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPainter>
#include <QScreen>
#include <QTextLayout>
#include <QVariant>
#include <QWidget>

namespace {

constexpr int kFirstDelay = 450;
constexpr int kNextDelay = 40;
constexpr int kStillWarm = 600; // since the last tip was hidden
constexpr int kGap = 6;
constexpr int kBottomInset = 4;
constexpr int kSideInset = 6;
constexpr int kWidest = 280;
constexpr int kMargin = 10;
constexpr char kTipProperty[] = "lumenpostTip";

} // namespace
Q_DECLARE_METATYPE(TipContent)

QPointF tipPosition(const QRectF &anchor, const QRectF &visible, const QSizeF &size)
{
    qreal top = anchor.bottom() + kGap;
    if (top + size.height() > visible.bottom() - kBottomInset)
        top = anchor.top() - kGap - size.height();
    qreal left = qMax(anchor.center().x() - size.width() / 2, visible.left() + kSideInset);
    left = qMin(left, visible.right() - size.width() - kSideInset);
    return {left, top};
}

// The bubble: the title, the shortcut as a key cap beside it, the detail under both.
class TipCenter::Bubble : public QWidget {
public:
    Bubble()
    {
        Floating::prepare(this);
        setWindowFlag(Qt::WindowTransparentForInput);
        setWindowFlag(Qt::ToolTip);
        setObjectName("tip");
    }

    void setContent(const TipContent &content)
    {
        m_title = content.title;
        m_shortcut = shortcutText(content.shortcut);
        m_detail = withShortcutWords(content.detail);
        const QFontMetricsF title(titleFont()), detail(detailFont()), cap(capFont());
        m_capWidth = m_shortcut.isEmpty() ? 0 : cap.horizontalAdvance(m_shortcut) + 10;
        const qreal first = title.horizontalAdvance(m_title) + (m_capWidth > 0 ? m_capWidth + 8 : 0);
        const QRectF lines = detail.boundingRect(QRectF(0, 0, kWidest - 2 * kMargin, 400),
                                                 Qt::AlignLeft | Qt::TextWordWrap, m_detail);
        const qreal width = qMax(first, m_detail.isEmpty() ? 0 : lines.width());
        qreal height = qMax<qreal>(title.height(), 17);
        if (!m_detail.isEmpty())
            height += 3 + lines.height();
        resize(qCeil(width) + 2 * kMargin, qCeil(height) + 14);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        Floating::paintMaterial(this, 8);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF inner = QRectF(rect()).adjusted(kMargin, 7, -kMargin, -7);
        const qreal line = qMax<qreal>(QFontMetricsF(titleFont()).height(), 17);
        painter.setFont(titleFont());
        painter.setPen(Theme::onMaterial());
        painter.drawText(QRectF(inner.left(), inner.top(), inner.width(), line), Qt::AlignVCenter, m_title);
        if (m_capWidth > 0) {
            const QRectF cap(inner.right() - m_capWidth, inner.top() + (line - 17) / 2, m_capWidth, 17);
            painter.setBrush(Theme::materialEdge());
            painter.setPen(Qt::NoPen);
            painter.drawRoundedRect(cap, 4, 4);
            painter.setFont(capFont());
            painter.setPen(Theme::onMaterial());
            painter.drawText(cap, Qt::AlignCenter, m_shortcut);
        }
        if (!m_detail.isEmpty()) {
            painter.setFont(detailFont());
            painter.setPen(Theme::onMaterialSecondary());
            painter.drawText(inner.adjusted(0, line + 3, 0, 0), Qt::AlignLeft | Qt::TextWordWrap, m_detail);
        }
    }
    void resizeEvent(QResizeEvent *) override { Floating::applyShape(this, 8); }

private:
    static QFont titleFont() { return Theme::font(Theme::Type::Control, QFont::DemiBold); }
    static QFont detailFont() { return Theme::font(Theme::Type::Caption); }
    static QFont capFont() { return Theme::font(Theme::Type::Caption, QFont::Medium); }

    QString m_title, m_shortcut, m_detail;
    qreal m_capWidth = 0;
};

TipCenter::TipCenter(const AppSettings *settings, QObject *parent) : QObject(parent), m_settings(settings)
{
    m_pending.setSingleShot(true);
    connect(&m_pending, &QTimer::timeout, this, &TipCenter::show);
    QCoreApplication::instance()->installEventFilter(this);
}

TipCenter::~TipCenter() = default;

void TipCenter::attach(QWidget *control, const TipContent &content)
{
    describe(control, content);
}

void TipCenter::describe(QWidget *control, const TipContent &content)
{
    control->setProperty(kTipProperty, QVariant::fromValue(content));
    control->setAttribute(Qt::WA_Hover);
    QWidget *spoken = control->focusProxy() ? control->focusProxy() : control;
    if (spoken->accessibleName().isEmpty())
        spoken->setAccessibleName(content.title);
    QString description = withShortcutWords(content.detail);
    if (!content.shortcut.isEmpty())
        description +=
            (description.isEmpty() ? "" : " ") + QStringLiteral("(%1)").arg(shortcutText(content.shortcut));
    if (spoken->accessibleDescription() != description) // each setting is an event
        spoken->setAccessibleDescription(description);
}

TipContent TipCenter::content(const QWidget *control)
{
    return control->property(kTipProperty).value<TipContent>();
}

bool TipCenter::isShown() const
{
    return m_bubble && m_bubble->isVisible();
}

bool TipCenter::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Enter:
        if (auto *control = qobject_cast<QWidget *>(watched);
            control && control->property(kTipProperty).isValid())
            hover(control);
        break;
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
        if (watched == m_owner)
            hide();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::Wheel:
        hide();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void TipCenter::hover(QWidget *control)
{
    if ((m_settings && !m_settings->showTips()) || content(control).title.isEmpty())
        return;
    const bool fast = isShown() || (m_lastHidden.isValid() && m_lastHidden.elapsed() < kStillWarm);
    m_owner = control;
    m_pending.start(fast ? kNextDelay : kFirstDelay);
}

void TipCenter::show()
{
    QWidget *control = m_owner;
    if (!control || !control->window()->isVisible() || control->width() <= 0)
        return;
    if (!m_bubble)
        m_bubble = std::make_unique<Bubble>();
    m_bubble->setContent(content(control));
    const QRectF anchor(control->mapToGlobal(QPoint(0, 0)), control->size());
    const QScreen *screen = control->screen();
    m_bubble->move(tipPosition(anchor, screen->availableGeometry(), m_bubble->size()).toPoint());
    m_bubble->show();
    m_bubble->raise();
}

void TipCenter::hide()
{
    m_pending.stop();
    if (isShown()) {
        m_bubble->hide();
        m_lastHidden.start();
    }
    m_owner = nullptr;
}
