#include "ui/color_panel.h"

#include "ui/floating.h"
#include "ui/roles.h"
#include "ui/texts.h"
#include "ui/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

namespace {

constexpr QSize kPlaneSize(224, 148);
constexpr int kBarHeight = 16;
constexpr double kKnob = 7;       // radius
constexpr double kKeyStep = 0.01; // of the whole range; ten times that with Shift
constexpr int kSampleWidth = 30;

void drawKnob(QPainter &painter, const QPointF &at, const QColor &color)
{
    painter.setBrush(color);
    painter.setPen(QPen(QColor(0, 0, 0, 90), 3));
    painter.drawEllipse(at, kKnob, kKnob);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawEllipse(at, kKnob, kKnob);
}

QColor fromParts(double hue, double saturation, double value)
{
    return QColor::fromHsvF(static_cast<float>(hue), static_cast<float>(saturation),
                            static_cast<float>(value));
}

// Where a pointer stands in a control, 0 to 1 along both axes.
QPointF share(const QPointF &position, const QSize &size)
{
    return {std::clamp(position.x() / size.width(), 0.0, 1.0),
            std::clamp(position.y() / size.height(), 0.0, 1.0)};
}

// How far an arrow key goes; nothing for any other key.
QPointF stepOf(const QKeyEvent &event)
{
    const double step = event.modifiers() & Qt::ShiftModifier ? 10 * kKeyStep : kKeyStep;
    switch (event.key()) {
    case Qt::Key_Left:
        return {-step, 0};
    case Qt::Key_Right:
        return {step, 0};
    case Qt::Key_Up:
        return {0, -step};
    case Qt::Key_Down:
        return {0, step};
    default:
        return {};
    }
}

} // namespace

// Saturation to the right, brightness upwards.
class ColorPanel::Plane : public QWidget {
public:
    explicit Plane(ColorPanel &panel) : m_panel(panel)
    {
        setFixedSize(kPlaneSize);
        setFocusPolicy(Qt::StrongFocus);
        setCursor(Qt::CrossCursor);
        setAccessibleName(UiTexts::tr("Saturation and brightness"));
        Roles::set(this, QAccessible::Slider);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterPath frame;
        frame.addRoundedRect(rect(), Theme::Radius::control, Theme::Radius::control);
        painter.setClipPath(frame);
        painter.fillRect(rect(), fromParts(m_panel.m_hue, 1, 1));
        QLinearGradient white(0, 0, width(), 0);
        white.setColorAt(0, Qt::white);
        white.setColorAt(1, QColor(255, 255, 255, 0));
        painter.fillRect(rect(), white);
        QLinearGradient black(0, 0, 0, height());
        black.setColorAt(0, QColor(0, 0, 0, 0));
        black.setColorAt(1, Qt::black);
        painter.fillRect(rect(), black);
        const QColor color = m_panel.m_color;
        drawKnob(painter, {color.hsvSaturationF() * width(), (1 - color.valueF()) * height()}, color);
    }
    void mousePressEvent(QMouseEvent *event) override { follow(event); }
    void mouseMoveEvent(QMouseEvent *event) override { follow(event); }
    void keyPressEvent(QKeyEvent *event) override
    {
        const QPointF step = stepOf(*event);
        if (step.isNull())
            return QWidget::keyPressEvent(event);
        const QColor color = m_panel.m_color;
        m_panel.take(m_panel.m_hue, color.hsvSaturationF() + step.x(), color.valueF() - step.y());
    }

private:
    void follow(QMouseEvent *event)
    {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        const QPointF at = share(event->position(), size());
        m_panel.take(m_panel.m_hue, at.x(), 1 - at.y());
    }

    ColorPanel &m_panel;
};

class ColorPanel::HueBar : public QWidget {
public:
    explicit HueBar(ColorPanel &panel) : m_panel(panel)
    {
        setFixedSize(kPlaneSize.width(), kBarHeight);
        setFocusPolicy(Qt::StrongFocus);
        setAccessibleName(UiTexts::tr("Hue"));
        Roles::set(this, QAccessible::Slider);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QLinearGradient hues(0, 0, width(), 0);
        for (int i = 0; i <= 6; ++i)
            hues.setColorAt(i / 6.0, fromParts(i % 6 / 6.0, 1, 1));
        painter.setPen(Qt::NoPen);
        painter.setBrush(hues);
        painter.drawRoundedRect(rect(), kBarHeight / 2.0, kBarHeight / 2.0);
        const double x = std::clamp(m_panel.m_hue * width(), kKnob + 1, width() - kKnob - 1);
        drawKnob(painter, {x, height() / 2.0}, fromParts(m_panel.m_hue, 1, 1));
    }
    void mousePressEvent(QMouseEvent *event) override { follow(event); }
    void mouseMoveEvent(QMouseEvent *event) override { follow(event); }
    void keyPressEvent(QKeyEvent *event) override
    {
        const QPointF step = stepOf(*event);
        if (step.x() == 0)
            return QWidget::keyPressEvent(event);
        turn(m_panel.m_hue + step.x());
    }

private:
    void follow(QMouseEvent *event)
    {
        if (event->buttons() & Qt::LeftButton)
            turn(share(event->position(), size()).x());
    }
    void turn(double hue)
    {
        const QColor color = m_panel.m_color;
        m_panel.take(hue, color.hsvSaturationF(), color.valueF());
    }

    ColorPanel &m_panel;
};

ColorPanel::ColorPanel(const QColor &color, QWidget *parent)
    : QFrame(parent, Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint),
      m_before(color.toRgb()),
      m_color(color.toRgb()),
      m_hue(std::max(color.hsvHueF(), 0.0f)),
      m_plane(new Plane(*this)),
      m_hueBar(new HueBar(*this)),
      m_field(new QLineEdit)
{
    setObjectName(QStringLiteral("colorPanel"));
    Roles::set(this, QAccessible::Dialog);
    setAccessibleName(UiTexts::tr("Color"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_TranslucentBackground, Floating::isComposited());
    m_field->setObjectName(QStringLiteral("hexField"));
    m_field->setAccessibleName(UiTexts::tr("Hexadecimal color"));
    m_field->setMaxLength(7);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(Theme::Space::group, Theme::Space::group, Theme::Space::group,
                               Theme::Space::group);
    column->setSpacing(Theme::Space::group);
    column->addWidget(m_plane);
    column->addWidget(m_hueBar);
    auto *row = new QHBoxLayout;
    row->addSpacing(kSampleWidth + Theme::Space::inside); // the sample is painted there
    row->addWidget(m_field);
    column->addLayout(row);
    connect(m_field, &QLineEdit::textEdited, this, &ColorPanel::readField);
    show(m_color);
}

void ColorPanel::openUnder(QWidget *anchor)
{
    adjustSize();
    Floating::applyShape(this, Theme::Radius::panel);
    const QRect screen = anchor->screen()->availableGeometry();
    const QPoint wanted = anchor->mapToGlobal(QPoint(0, anchor->height() + Theme::Space::unit));
    move(std::clamp(wanted.x(), screen.left(), std::max(screen.right() - width(), screen.left())),
         std::clamp(wanted.y(), screen.top(), std::max(screen.bottom() - height(), screen.top())));
    QFrame::show();
    m_plane->setFocus();
}

void ColorPanel::choose(const QColor &color)
{
    if (!color.isValid())
        return;
    m_color = color.toRgb();
    if (m_color.hsvHueF() >= 0) // grey has none
        m_hue = m_color.hsvHueF();
    show(m_color);
    Q_EMIT changed(m_color);
}

void ColorPanel::take(double hue, double saturation, double value)
{
    m_hue = std::clamp(hue, 0.0, 1.0);
    m_color = fromParts(m_hue, std::clamp(saturation, 0.0, 1.0), std::clamp(value, 0.0, 1.0)).toRgb();
    show(m_color);
    Q_EMIT changed(m_color);
}

void ColorPanel::show(const QColor &color)
{
    m_field->setText(color.name().toUpper());
    const int saturation = qRound(color.hsvSaturationF() * 100), brightness = qRound(color.valueF() * 100);
    Roles::setValue(m_plane, brightness, 100,
                    UiTexts::tr("saturation %1%, brightness %2%").arg(saturation).arg(brightness));
    Roles::setValue(m_hueBar, qRound(m_hue * 360), 360);
    update();
    m_plane->update();
    m_hueBar->update();
}

void ColorPanel::readField()
{
    QString name = m_field->text().trimmed();
    if (!name.startsWith('#'))
        name.prepend('#');
    if (name.size() != 7 || !QColor::isValidColor(name))
        return;
    const int cursor = m_field->cursorPosition();
    choose(QColor(name));
    m_field->setCursorPosition(cursor);
}

void ColorPanel::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && m_color != m_before)
        choose(m_before);
    if (event->key() == Qt::Key_Escape || isReturn)
        close();
    else
        QFrame::keyPressEvent(event);
}

void ColorPanel::paintEvent(QPaintEvent *)
{
    const auto &t = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(t.raised);
    painter.setPen(QPen(t.raisedEdge, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::Radius::panel,
                            Theme::Radius::panel);
    const QRect field = m_field->geometry();
    painter.setBrush(m_color);
    painter.setPen(QPen(t.hairline, 1));
    painter.drawRoundedRect(
        QRectF(Theme::Space::group, field.top(), kSampleWidth, field.height()).adjusted(0.5, 0.5, -0.5, -0.5),
        Theme::Radius::control, Theme::Radius::control);
}
