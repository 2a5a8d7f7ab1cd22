#include "steps/ui/review_status.h"

#include "steps/steps_guide_model.h"
#include "steps/ui/texts.h"
#include "ui/floating.h"
#include "ui/symbol.h"
#include "ui/theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr int kFromBottom = 16;
constexpr int kUndoOffer = 8000; // milliseconds; the key and the menu undo for longer

} // namespace

ReviewStatus::ReviewStatus(StepsGuideModel &model, QWidget *parent)
    : QWidget(parent),
      m_model(model),
      m_symbol(new SymbolLabel(QStringLiteral("sparkles"), Theme::Size::rowIcon)),
      m_text(new QLabel),
      m_cancel(new QPushButton(StepsUiTexts::tr("Cancel"))),
      m_undo(new QPushButton(StepsUiTexts::tr("Undo"))),
      m_steps(model.steps().size())
{
    setObjectName(QStringLiteral("reviewStatus"));
    Floating::useDarkPalette(this);
    m_symbol->setColor(Theme::onMaterial());
    m_text->setFont(Theme::font(Theme::Type::Body, QFont::Medium));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Theme::Space::margin, Theme::Space::inside, Theme::Space::margin,
                            Theme::Space::inside);
    row->setSpacing(Theme::Space::inside);
    row->addWidget(m_symbol);
    row->addWidget(m_text);
    row->addWidget(m_cancel);
    row->addWidget(m_undo);
    parent->installEventFilter(this);
    m_undoOffer.setSingleShot(true);
    m_undoOffer.setInterval(kUndoOffer);
    connect(&m_undoOffer, &QTimer::timeout, this, &ReviewStatus::follow);
    connect(m_cancel, &QPushButton::clicked, &model, &StepsGuideModel::cancelExport);
    connect(m_undo, &QPushButton::clicked, &model, &StepsGuideModel::undo);
    connect(&model, &StepsGuideModel::statusChanged, this, &ReviewStatus::follow);
    connect(&model, &StepsGuideModel::stepsChanged, this, &ReviewStatus::countSteps);
    follow();
}

void ReviewStatus::countSteps()
{
    m_deleted = m_steps - m_model.steps().size();
    m_steps = m_model.steps().size();
    if (m_deleted > 0)
        m_undoOffer.start();
    else
        m_undoOffer.stop();
    follow();
}

void ReviewStatus::follow()
{
    const auto status = m_model.status();
    const bool offersUndo = m_undoOffer.isActive() && m_model.canUndo();
    // An export can be given up; a search is only told of.
    const bool tellsStatus = status && (m_model.canCancel() || !offersUndo);
    setVisible(tellsStatus || offersUndo);
    if (isHidden())
        return;
    m_symbol->setSymbol(tellsStatus ? QStringLiteral("sparkles") : QStringLiteral("trash"));
    m_text->setText(tellsStatus ? *status : StepsUiTexts::tr("%n step(s) deleted", nullptr, int(m_deleted)));
    m_cancel->setVisible(tellsStatus && m_model.canCancel());
    m_undo->setVisible(!tellsStatus);
    place();
}

void ReviewStatus::place()
{
    layout()->activate();
    adjustSize();
    move((parentWidget()->width() - width()) / 2, parentWidget()->height() - height() - kFromBottom);
    raise();
}

bool ReviewStatus::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        place();
    return QWidget::eventFilter(watched, event);
}

void ReviewStatus::paintEvent(QPaintEvent *)
{
    Floating::paintMaterial(this, Theme::Radius::panel);
}
