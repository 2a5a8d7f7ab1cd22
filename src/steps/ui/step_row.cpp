#include "steps/ui/step_row.h"

#include "steps/steps_guide_model.h"
#include "steps/ui/caption_field.h"
#include "steps/ui/step_picture_view.h"
#include "steps/ui/texts.h"
#include "ui/controls.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>

namespace {

constexpr int kMargin = Theme::Space::margin;
constexpr int kNumber = 28;
constexpr int kGap = Theme::Space::group;
constexpr int kFooter = Theme::Size::barButton;
constexpr int kBelow = Theme::Space::inside; // of the footer
constexpr int kCaptionLine = 28;             // a caption of one line

int pictureWidth(int width)
{
    return width - 2 * kMargin;
}

} // namespace

StepRow::StepRow(StepsGuideModel &model, const QUuid &step, QWidget *parent)
    : QWidget(parent),
      m_model(model),
      m_step(step),
      m_caption(new CaptionField(this)),
      m_picture(new StepPictureView(this)),
      m_hint(new QLabel(this)),
      m_back(new QPushButton(this))
{
    setObjectName(QStringLiteral("stepRow"));
    m_hint->setFont(Theme::font(Theme::Type::Caption));
    m_hint->setForegroundRole(QPalette::PlaceholderText);
    m_hint->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_back->setFocusPolicy(Qt::NoFocus);
    makeFooter();
    connect(m_caption, &CaptionField::edited, this,
            [this](const QString &text) { m_model.setCaption(m_step, text); });
    connect(m_caption, &CaptionField::left, this, &StepRow::captionLeft);
    connect(m_caption, &CaptionField::entered, this, &StepRow::captionEntered);
    connect(m_picture, &StepPictureView::markerPut, this,
            [this](QPointF point) { m_model.moveMarker(m_step, point); });
    connect(m_picture, &StepPictureView::editWanted, this, [this] { m_model.edit(m_step); });
    follow();
}

BarButton *StepRow::addAction(const QString &symbol, const QString &text, const QString &help)
{
    auto *button = new BarButton(symbol, text, BarButton::Label::None, this);
    // The keyboard has the list's own keys, and Tab goes from caption to caption.
    button->setFocusPolicy(Qt::NoFocus);
    TipCenter::describe(button, {text, help, {}});
    return button;
}

void StepRow::makeFooter()
{
    m_edit = new BarButton(QStringLiteral("pencil.and.outline"), StepsUiTexts::tr("Edit"),
                           BarButton::Label::Beside, this);
    m_edit->setFocusPolicy(Qt::NoFocus);
    m_edit->setAccessibleName(StepsUiTexts::tr("Edit Step"));
    TipCenter::describe(m_edit, {StepsUiTexts::tr("Edit Step"),
                                 StepsUiTexts::tr("Open this step in the full editor — arrows, text, blur, "
                                                  "crop and more. Save or close to bring it back."),
                                 {}});
    m_up = addAction(QStringLiteral("chevron.up"), StepsUiTexts::tr("Move Up"),
                     StepsUiTexts::tr("Move this step earlier in the guide."));
    m_down = addAction(QStringLiteral("chevron.down"), StepsUiTexts::tr("Move Down"),
                       StepsUiTexts::tr("Move this step later in the guide."));
    m_delete = addAction(QStringLiteral("trash"), StepsUiTexts::tr("Delete Step"),
                         StepsUiTexts::tr("Remove this step from the guide."));
    connect(m_edit, &QAbstractButton::clicked, this, [this] { m_model.edit(m_step); });
    // Queued: the row may be gone, or stand elsewhere, when the button's own work is over.
    connect(
        m_up, &QAbstractButton::clicked, this, [this] { m_model.move(m_standing.number - 1, -1); },
        Qt::QueuedConnection);
    connect(
        m_down, &QAbstractButton::clicked, this, [this] { m_model.move(m_standing.number - 1, 1); },
        Qt::QueuedConnection);
    connect(
        m_delete, &QAbstractButton::clicked, &m_model,
        [model = &m_model, id = m_step] { model->remove({id}); }, Qt::QueuedConnection);
    connect(m_back, &QAbstractButton::clicked, this, [this] {
        const GuideStep *step = m_model.step(m_step);
        if (step && step->edited)
            m_model.revertEdits(m_step);
        else
            m_model.resetMarker(m_step);
    });
}

void StepRow::setStanding(const Standing &standing)
{
    if (m_standing == standing)
        return;
    m_standing = standing;
    m_up->setEnabled(standing.number > 1);
    m_down->setEnabled(!standing.isLast);
    m_caption->setName(StepsUiTexts::tr("Caption of step %1").arg(standing.number));
    setAccessibleName(StepsUiTexts::tr("Step %1").arg(standing.number));
    update();
}

void StepRow::follow()
{
    const GuideStep *step = m_model.step(m_step);
    if (!step)
        return;
    m_picture->setStep(*step);
    m_caption->setText(step->caption);
    if (step->edited) {
        m_hint->setText(StepsUiTexts::tr("Edited · Double-click to keep editing"));
        m_back->setText(StepsUiTexts::tr("Revert"));
        m_back->setAccessibleName(StepsUiTexts::tr("Revert Edits"));
        TipCenter::describe(
            m_back, {StepsUiTexts::tr("Revert Edits"),
                     StepsUiTexts::tr("Go back to the original screenshot with the automatic marker."),
                     {}});
    } else {
        m_hint->setText(step->click
                            ? StepsUiTexts::tr("Drag the marker to move it · double-click to edit")
                            : StepsUiTexts::tr("Click the image to add a marker · double-click to edit"));
        m_back->setText(StepsUiTexts::tr("Reset position"));
        m_back->setAccessibleName(m_back->text());
        TipCenter::describe(
            m_back,
            {m_back->text(), StepsUiTexts::tr("Put the marker back where you actually clicked."), {}});
    }
    m_back->setVisible(step->edited || m_model.markerMoved(m_step));
    if (height() != heightForWidth(width()))
        Q_EMIT heightChanged();
    place();
}

void StepRow::followPreview()
{
    m_picture->setPreview(m_model.previews().preview(m_step));
}

void StepRow::releasePreview()
{
    m_picture->setPreview({});
}

QRect StepRow::numberRect() const
{
    return {kMargin, kMargin, kNumber, kNumber};
}

int StepRow::heightForWidth(int width) const
{
    const GuideStep *step = m_model.step(m_step);
    if (!step)
        return height();
    const int caption = m_caption->heightForWidth(width - 2 * kMargin - kNumber - Theme::Space::unit);
    return usualHeight(*step, width) - kCaptionLine + std::max(caption, kCaptionLine);
}

int StepRow::usualHeight(const GuideStep &step, int width)
{
    const QSize picture = step.edited ? step.edited->base.size() : step.image.size();
    return kMargin + kCaptionLine + kGap +
           StepPictureView::sizeWithin(picture, pictureWidth(width)).height() + Theme::Space::unit + kFooter +
           kBelow;
}

void StepRow::place()
{
    const GuideStep *step = m_model.step(m_step);
    if (!step)
        return;
    const int left = kMargin + kNumber + Theme::Space::unit;
    const int captionWidth = width() - left - kMargin;
    m_caption->setGeometry(left, kMargin, captionWidth,
                           std::max(m_caption->heightForWidth(captionWidth), kCaptionLine));
    const QSize picture = step->edited ? step->edited->base.size() : step->image.size();
    const QSize size = StepPictureView::sizeWithin(picture, pictureWidth(width()));
    m_picture->setGeometry((width() - size.width()) / 2, m_caption->geometry().bottom() + 1 + kGap,
                           size.width(), size.height());
    const int top = height() - kBelow - kFooter;
    int right = width() - kMargin + Theme::Space::inside;
    for (BarButton *button : {m_delete, m_down, m_up, m_edit}) {
        const QSize hint = button->sizeHint();
        right -= hint.width();
        button->setGeometry(right, top, hint.width(), kFooter);
    }
    int room = right - kMargin - Theme::Space::inside;
    if (!m_back->isHidden()) {
        const QSize hint = m_back->sizeHint();
        const int words = std::min(m_hint->sizeHint().width(), room - hint.width() - Theme::Space::group);
        m_hint->setGeometry(kMargin, top, std::max(words, 0), kFooter);
        m_back->setGeometry(kMargin + std::max(words, 0) + Theme::Space::group,
                            top + (kFooter - hint.height()) / 2, hint.width(), hint.height());
    } else {
        m_hint->setGeometry(kMargin, top, room, kFooter);
    }
}

void StepRow::resizeEvent(QResizeEvent *)
{
    place();
}

void StepRow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isPressed = true;
    m_isDragged = false;
    m_pressedAt = event->position().toPoint();
    Q_EMIT pressed(event->modifiers());
}

void StepRow::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isPressed)
        return;
    const QPoint way = event->position().toPoint() - m_pressedAt;
    m_isDragged = m_isDragged || way.manhattanLength() >= QApplication::startDragDistance();
    if (m_isDragged)
        Q_EMIT dragged(event->globalPosition().toPoint());
}

void StepRow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isPressed = false;
    if (std::exchange(m_isDragged, false))
        Q_EMIT dropped();
}

void StepRow::contextMenuEvent(QContextMenuEvent *event)
{
    Q_EMIT menuWanted(event->globalPos());
}

void StepRow::paintEvent(QPaintEvent *)
{
    const Theme::Tokens &theme = Theme::tokens(this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF card = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(m_standing.isSelected ? QPen(theme.accent, 1.5) : QPen(theme.hairline, 1));
    painter.setBrush(theme.surface);
    painter.drawRoundedRect(card, Theme::Radius::card, Theme::Radius::card);
    if (m_standing.isSelected) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.accentWash);
        painter.drawRoundedRect(card, Theme::Radius::card, Theme::Radius::card);
    }
    if (m_standing.isCurrent) {
        painter.setPen(QPen(theme.accent, Theme::Size::focusRing));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(card.adjusted(1, 1, -1, -1), Theme::Radius::card - 1,
                                Theme::Radius::card - 1);
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.accentFill);
    painter.drawEllipse(numberRect());
    painter.setPen(theme.onAccent);
    painter.setFont(Theme::font(Theme::Type::Body, QFont::DemiBold));
    painter.drawText(numberRect(), Qt::AlignCenter, QString::number(m_standing.number));
}
