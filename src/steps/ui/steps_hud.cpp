#include "steps/ui/steps_hud.h"

#include "artwork/symbols.h"
#include "platform/screens.h"
#include "steps/steps_recorder.h"
#include "steps/ui/texts.h"
#include "ui/hud_panel.h"
#include "ui/symbol.h"
#include "ui/theme.h"
#include "ui/tips.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>

namespace {

constexpr int kTextWidth = 250; // a caption of usual length; the panel doesn't change its size
constexpr double kFromBottom = 70;

void explain(QPushButton *button, const QString &help)
{
    TipCenter::describe(button, {button->text(), help, {}});
    button->setAccessibleName({}); // its text is, which changes
}

} // namespace

StepsHUDView::StepsHUDView(StepsRecorder &recorder, QWidget *parent)
    : QWidget(parent),
      m_recorder(recorder),
      m_symbol(new SymbolLabel(QStringLiteral("list.number"), Theme::Size::barIcon)),
      m_lines(new QWidget)
{
    setObjectName(QStringLiteral("stepsHUD"));
    m_lines->setFixedSize(kTextWidth, 2 * Theme::Size::barIcon);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Theme::Space::unit, 0, 0, 0);
    row->setSpacing(Theme::Space::inside);
    row->addWidget(m_symbol);
    row->addWidget(m_lines);
    QPushButton *add = addButton(
        StepsUiTexts::tr("Add Step"), QStringLiteral("camera"),
        StepsUiTexts::tr("Capture the screen now without clicking — for hover menus and tooltips."));
    m_pause = addButton(StepsUiTexts::tr("Resume"), QStringLiteral("play.fill"),
                        StepsUiTexts::tr("Clicks aren't captured while paused."));
    const int wider = m_pause->sizeHint().width();
    m_pause->setText(StepsUiTexts::tr("Pause"));
    m_pause->setFixedWidth(std::max(wider, m_pause->sizeHint().width())); // nothing moves under the pointer
    m_done = addButton(StepsUiTexts::tr("Done"), {}, StepsUiTexts::tr("Stop and review your guide."));
    m_done->setDefault(true);
    QPushButton *cancel = addButton(StepsUiTexts::tr("Cancel"), QStringLiteral("xmark"),
                                    StepsUiTexts::tr("Stop and discard these steps."));
    connect(add, &QPushButton::clicked, &recorder, &StepsRecorder::addStep);
    connect(m_pause, &QPushButton::clicked, &recorder,
            [&recorder] { recorder.setPaused(!recorder.isPaused()); });
    connect(m_done, &QPushButton::clicked, &recorder, &StepsRecorder::done);
    connect(cancel, &QPushButton::clicked, &recorder, &StepsRecorder::cancel);
    connect(&recorder, &StepsRecorder::changed, this, &StepsHUDView::follow);
    follow();
}

QPushButton *StepsHUDView::addButton(const QString &text, const QString &symbol, const QString &help)
{
    auto *button = new QPushButton(text);
    if (!symbol.isEmpty())
        button->setIcon(Symbols::icon(symbol, Theme::onMaterial()));
    button->setFocusPolicy(Qt::NoFocus); // the keyboard stays with the program that is shown
    explain(button, help);
    layout()->addWidget(button);
    return button;
}

void StepsHUDView::follow()
{
    const bool isPaused = m_recorder.isPaused();
    m_symbol->setSymbol(isPaused ? QStringLiteral("pause.circle.fill") : QStringLiteral("list.number"));
    m_pause->setText(isPaused ? StepsUiTexts::tr("Resume") : StepsUiTexts::tr("Pause"));
    explain(m_pause, m_pause->accessibleDescription());
    m_pause->setIcon(Symbols::icon(isPaused ? QStringLiteral("play.fill") : QStringLiteral("pause.fill"),
                                   Theme::onMaterial()));
    m_done->setEnabled(!m_recorder.steps().isEmpty() &&
                       m_recorder.state() != StepsRecorder::State::Finishing);
    m_first = isPaused ? StepsUiTexts::tr("Paused")
                       : StepsUiTexts::tr("Recording steps · %1").arg(m_recorder.steps().size());
    m_second = m_recorder.isCapturing() ? StepsUiTexts::tr("Saving step…") : m_recorder.lastCaptured();
    setAccessibleName(m_first + QStringLiteral(", ") + m_second);
    update();
}

void StepsHUDView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect place = m_lines->geometry();
    const QRect upper(place.left(), place.top(), place.width(), place.height() / 2);
    painter.setFont(Theme::font(Theme::Type::Body, QFont::DemiBold));
    painter.setPen(Theme::onMaterial());
    Theme::drawTabular(painter, upper, Qt::AlignLeft | Qt::AlignVCenter, m_first);
    painter.setFont(Theme::font(Theme::Type::Control));
    painter.setPen(Theme::onMaterialSecondary());
    painter.drawText(upper.translated(0, upper.height()), Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(m_second, Qt::ElideRight, place.width()));
}

std::unique_ptr<HUDPanel> makeStepsHUD(StepsRecorder &recorder, const Screen &screen)
{
    const QRectF usable = HUDPanel::usableFrame(screen);
    const QRectF anchor(usable.center().x(), usable.bottom() - kFromBottom, 0, 0);
    return HUDPanel::make(anchor, usable, new StepsHUDView(recorder));
}
